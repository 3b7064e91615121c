// frame/files.h - opening files in a host program that may have closed its streams or put other things in
// their place
#pragma once

#include <fcntl.h>

namespace orvel::frame {

// Descriptor of a regular file or, for output, a terminal or the null device, or -1. It is 3 or more, closed
// by exec, and nothing is waited for.
int open_to_read(const char* path);

// The same, to append. What a file holds from before this program began is dropped.
int open_to_append(const char* path);

}  // namespace orvel::frame
