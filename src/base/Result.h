#pragma once
// The value-or-error result that every core operation that can fail returns.
// No exception crosses a module boundary: the caller looks at the result and the
// window shows the error's message (a key of section MESSAGE) with its details.
#include <string>
#include <utility>
#include <variant>

namespace tarvolin {

struct Error {
    std::string Key;     // key in section MESSAGE of the settings file, e.g. "ERR_SFF_RANGE"
    std::string File;    // the file the error is about; may be empty
    std::string Detail;  // what exactly is wrong: offsets, indices, the failing call's reason
};

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : v_(std::move(value)) {}
    Result(Error error) : v_(std::move(error)) {}

    bool ok() const { return v_.index() == 0; }
    explicit operator bool() const { return ok(); }
    T& value() { return std::get<0>(v_); }
    const T& value() const { return std::get<0>(v_); }
    const Error& error() const { return std::get<1>(v_); }

private:
    std::variant<T, Error> v_;
};

struct Done {};
using Status = Result<Done>;
inline Status Ok() { return Done{}; }

}  // namespace tarvolin
