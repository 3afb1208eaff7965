// Frames.h: Ethernet frames for tests, built from what matters to a learner: the tags and the
// source.
#pragma once

#include <cstdint>
#include <string>

namespace Frames {

/// Six bytes of a MAC address whose last byte is n and whose first is flags (1: group, 2: locally
/// administered).
inline std::string mac( unsigned n, unsigned flags = 2 ) {
  return { static_cast< char >( flags ), 0, 0, 0, 0, static_cast< char >( n ) };
}

/// A tag of four bytes.
inline std::string tag( unsigned tpid, unsigned tci ) {
  return { static_cast< char >( tpid >> 8 ), static_cast< char >( tpid ),
           static_cast< char >( tci >> 8 ), static_cast< char >( tci ) };
}

/// A frame to everybody from source, with the tags, an IPv4 type and a payload.
inline std::string frameFrom( std::string const & source, std::string const & tags = {},
                              std::size_t payloadSize = 46 ) {
  return std::string( 6, '\xff' ) + source + tags + std::string( "\x08\0", 2 ) +
         std::string( payloadSize, 'p' );
}

}  // namespace Frames
