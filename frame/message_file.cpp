// frame/message_file.cpp - errors whose texts are records of a message file
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "frame/export.h"
#include "frame/files.h"
#include "frame/routine.h"
#include "frame/switches.h"

namespace orvel::frame {

namespace {

constexpr int64_t record_length = message_room;
constexpr std::size_t directory_room = 128;
constexpr std::string_view file_name = "/messages.daf";

enum class Reading { done, not_opened, not_read };

class File {
public:
    explicit File(const char* path) : descriptor_(open_to_read(path)) {}
    ~File()
    {
        if (descriptor_ >= 0) close(descriptor_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool is_open() const { return descriptor_ >= 0; }

    bool read_at(int64_t offset, char* to, int64_t count) const
    {
        while (count > 0) {
            const ssize_t n = pread(descriptor_, to, static_cast<std::size_t>(count), offset);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) return false;
            to += n;
            offset += n;
            count -= n;
        }
        return true;
    }

private:
    int descriptor_;
};

// A directory longer than the room is not cut: it would name another one.
Reading read_record(int32_t number, std::array<char, record_length>& record)
{
    const char* directory = std::getenv("TAL_F90_MSG");
    if (directory == nullptr) return Reading::not_opened;
    const std::string_view trimmed = without_trailing_blanks(directory);
    if (trimmed.size() > directory_room) return Reading::not_opened;
    char path[directory_room + file_name.size() + 1] = {};
    std::copy(file_name.begin(), file_name.end(), std::copy(trimmed.begin(), trimmed.end(), path));

    const File file(path);
    if (!file.is_open()) return Reading::not_opened;
    const bool read =
        number >= 1 && file.read_at((int64_t{number} - 1) * record_length, record.data(), record_length);
    return read ? Reading::done : Reading::not_read;
}

template <class T>
struct Packet;
template <>
struct Packet<float> {
    using Entry = orvel_s_epack;
};
template <>
struct Packet<double> {
    using Entry = orvel_d_epack;
};

enum PacketEntry {
    number,
    type,
    code,
    print_action,
    stop_action,
    integer_count,
    real_count,
    first_parameter
};

template <class T>
void error_post(const typename Packet<T>::Entry* epack, const int32_t* n)
{
    Routine<T, "S_ERROR_POST", "D_ERROR_POST"> me;
    State& s = me.state();
    const auto count_of = [&](PacketEntry k) { return *n > k ? std::clamp(epack[k].whole, 0, 9) : 0; };
    const int32_t integers = count_of(integer_count);
    const int32_t reals = count_of(real_count);
    const int32_t least = first_parameter + integers + reals;
    if (*n < least)
        return me.post(terminal, 1,
                       "The size of derived type epack is abruptly truncated.  It should be at least %(i1).",
                       {i(1, least)});

    std::array<char, record_length> record{};
    const Reading reading = read_record(epack[number].whole, record);
    const std::string_view text = without_trailing_blanks({record.data(), record.size()});
    if (reading == Reading::not_opened)
        return me.post(terminal, 2, "Unable to open the Orvel MP Library Error message file!");
    if (reading == Reading::not_read || text.empty())
        return me.post(terminal, 3, "Unable to read a record from the Orvel MP Library Error message file!");

    const int32_t posted = epack[type].whole;
    const int32_t severity = posted == prompt_warning ? warning : posted == prompt_fatal ? fatal : posted;
    if (epack[print_action].whole != -1 || epack[stop_action].whole != -1)
        erset(&severity, &epack[print_action].whole, &epack[stop_action].whole);
    if (me.failed()) return;

    s.errors->parlen = 1;
    const auto* parameters = epack + first_parameter;
    for (int32_t k = 0; k < integers; ++k) store_integer(s, k + 1, parameters[k].whole);
    for (int32_t k = 0; k < reals; ++k) store_real(s, k + 1, parameters[integers + k].real);
    post_stored(s, real_kind<T>, posted, epack[code].whole, text);
}

}  // namespace

}  // namespace orvel::frame

ORVEL_EXPORT_REALS(S_ERROR_POST, s_error_post_, D_ERROR_POST, d_error_post_, 2, orvel::frame::error_post);
