#pragma once

#include <cstdint>

// Map windows loaded and not yet closed; the frame's map commands are enabled while
// it is above 0.
inline std::int16_t OpenMapCount = 0;
