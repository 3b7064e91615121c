// frame/message_text.h - text of a message, put together in a room of fixed size
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace orvel::frame {

class Text {
public:
    Text(char* room, std::size_t size) : room_(room), size_(size) {}

    Text& operator<<(std::string_view text)
    {
        const std::size_t n = std::min(text.size(), size_ - length_);
        std::copy_n(text.data(), n, room_ + length_);
        length_ += n;
        return *this;
    }

    Text& operator<<(int64_t value)
    {
        char digits[24];
        return *this << std::string_view(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }

    // A whole number right-aligned in six characters; stars when it does not fit.
    Text& in_six(int64_t value)
    {
        if (value > 999999 || value < -99999) return *this << "******";
        char digits[8];
        const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        return *this << std::string_view("      ").substr(static_cast<std::size_t>(end - digits))
                     << std::string_view(digits, end);
    }

    std::string_view view() const { return {room_, length_}; }

private:
    char* room_;
    std::size_t size_;
    std::size_t length_ = 0;
};

}  // namespace orvel::frame
