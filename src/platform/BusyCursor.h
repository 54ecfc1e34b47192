#pragma once
// The mouse pointer of a window: 11 is the hourglass, 0 the default.

class QWidget;

namespace tarvolin::platform {

inline constexpr int kHourglass = 11;
inline constexpr int kDefaultPointer = 0;

void SetMousePointer(QWidget* window, int pointer);

// The hourglass over a window for as long as a command works; back to the default
// pointer on every way out, or earlier by Release (before a failure's message).
class Hourglass {
public:
    explicit Hourglass(QWidget* window) : window_(window) { SetMousePointer(window_, kHourglass); }
    ~Hourglass() { Release(); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;
    void Release() {
        if (window_) SetMousePointer(window_, kDefaultPointer);
        window_ = nullptr;
    }

private:
    QWidget* window_;
};

}  // namespace tarvolin::platform
