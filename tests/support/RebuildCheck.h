#pragma once
// The round trip's check: an SFF made from the table of another must hold the same sprites,
// each with the same group and item numbers, the same axis and the same pixels.
#include <string>
#include <vector>

namespace tarvolin::test {

// What differs between the sprites of the two files, one text each; empty when they agree
// (also empty-handed when one can't be opened: that is reported as a difference).
std::vector<std::string> RebuildDifferences(const std::string& originalSff, const std::string& rebuiltSff);

}  // namespace tarvolin::test
