#include "mainwin/FindRow.h"

#include "base/TextHelpers.h"

namespace tarvolin {

namespace {

struct Query {
    double Group = 0;
    std::optional<double> Item;
};

std::optional<Query> ParseQuery(const std::string& text) {
    const size_t comma = text.find(',');
    const auto group = ParseNumber(text.substr(0, comma));
    if (!group) return std::nullopt;
    Query q{*group, std::nullopt};
    if (comma == std::string::npos) return q;
    q.Item = ParseNumber(text.substr(comma + 1));
    if (!q.Item) return std::nullopt;
    return q;
}

bool Matches(const SpriteRow& row, const Query& q) {
    const auto group = ParseNumber(row[Column::GroupNo]);
    if (!group || *group != q.Group) return false;
    if (!q.Item) return true;
    const auto item = ParseNumber(row[Column::ItemNo]);
    return item && *item == *q.Item;
}

}  // namespace

std::optional<int> FindRow(const SpriteTable& table, const std::string& query, int from) {
    const auto q = ParseQuery(query);
    const int rows = table.RowCount();
    if (!q || rows == 0) return std::nullopt;
    const int start = from >= 1 && from <= rows ? from : 1;
    for (int k = 0; k < rows; ++k) {
        const int place = (start - 1 + k) % rows + 1;
        if (Matches(table.Row(place), *q)) return place;
    }
    return std::nullopt;
}

}  // namespace tarvolin
