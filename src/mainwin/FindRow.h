#pragma once
// Find in the table: a query of a group number, or a group and an item number, "9000" or
// "9000,1" (blanks around the numbers allowed), matched against the rows' GroupNo and
// ItemNo cells as numbers.
#include <optional>
#include <string>

#include "sff/SpriteTable.h"

namespace tarvolin {

// The first matching row from `from` on (counted from 1), going on from the top after the
// last row; nothing when none matches or the query is neither form.
std::optional<int> FindRow(const SpriteTable& table, const std::string& query, int from);

}  // namespace tarvolin
