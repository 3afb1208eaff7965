// Types.h: the numbers that values are made of.
#pragma once

#include <cstdint>

namespace Koi {

using U8 = std::uint8_t;
using U16 = std::uint16_t;
using U32 = std::uint32_t;
using U64 = std::uint64_t;
using I32 = std::int32_t;

/// A time in seconds.
using Seconds = double;

}  // namespace Koi
