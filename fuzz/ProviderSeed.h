#pragma once
// Seeds for the fuzzers that read their input with libFuzzer's FuzzedDataProvider, written
// in the form it reads: a text from the front, ended by a backslash and another byte (a
// backslash of its own doubled); a number from the back, its highest byte first, in as
// many bytes as its range needs (none for a range of one value).
#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvolin::fuzz {

class ProviderSeed {
public:
    // ConsumeRandomLengthString.
    ProviderSeed& Text(std::string_view text) {
        for (char c : text) {
            if (c == '\\') front_.push_back('\\');
            front_.push_back(static_cast<uint8_t>(c));
        }
        front_.push_back('\\');
        front_.push_back('.');
        return *this;
    }
    ProviderSeed& Text(const std::vector<uint8_t>& bytes) {
        return Text(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }

    // ConsumeIntegralInRange(low, high) giving `value`.
    ProviderSeed& Number(int64_t value, int64_t low, int64_t high) {
        const uint64_t range = static_cast<uint64_t>(high - low);
        const uint64_t raw = static_cast<uint64_t>(value - low);
        int bytes = 0;
        while (bytes < 8 && (range >> (8 * bytes)) > 0) ++bytes;
        for (int i = bytes - 1; i >= 0; --i) back_.push_back(static_cast<uint8_t>(raw >> (8 * i)));
        return *this;
    }

    std::vector<uint8_t> Bytes() const {
        std::vector<uint8_t> out = front_;
        out.insert(out.end(), back_.rbegin(), back_.rend());
        return out;
    }

private:
    std::vector<uint8_t> front_;
    std::vector<uint8_t> back_;  // in the order the numbers are taken
};

}  // namespace tarvolin::fuzz
