// frame/page.h - text that leaves the library as one piece
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace orvel::frame {

// Collects the lines of one message. The room holds the longest that can be printed: 1024 characters broken
// by 512 line ends take 8 KiB, a traceback of 50 levels 5 KiB.
class Page {
public:
    Page& operator<<(std::string_view text)
    {
        const std::size_t n = std::min(text.size(), sizeof text_ - length_);
        std::copy_n(text.data(), n, text_ + length_);
        length_ += n;
        return *this;
    }

    Page& operator<<(int64_t value)
    {
        char digits[24];
        return *this << std::string_view(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }

    // A whole number right-aligned in six characters; stars when it does not fit.
    Page& in_six(int64_t value)
    {
        if (value > 999999 || value < -99999) return *this << "******";
        char digits[8];
        const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        return *this << std::string_view("      ").substr(static_cast<std::size_t>(end - digits))
                     << std::string_view(digits, end);
    }

    std::string_view text() const { return {text_, length_}; }

private:
    std::size_t length_ = 0;
    char text_[16384];
};

}  // namespace orvel::frame
