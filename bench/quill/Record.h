// Record.h: what every table of quillBench holds: 32 bytes, a host's key in the first eight. A
// record proves itself, so that whoever reads it can tell a torn or mistaken one.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Bench {

/// A 16-bit VLAN table number and the six bytes of a MAC address.
using Key = std::uint64_t;

struct Value {
  std::uint32_t intf, generation;
  std::uint64_t moved;
  std::uint64_t check;
};

struct Record {
  Key key;
  Value value;
};
static_assert( sizeof( Record ) == 32 );

/// One to one: different numbers give different ones back.
inline std::uint64_t mixed( std::uint64_t x ) {
  x = ( x ^ ( x >> 30 ) ) * 0xbf58476d1ce4e5b9;
  x = ( x ^ ( x >> 27 ) ) * 0x94d049bb133111eb;
  return x ^ ( x >> 31 );
}

inline std::uint64_t checkOf( Key key, Value const & value ) {
  return mixed( key ^ value.moved ) + value.generation * 0x9e3779b97f4a7c15 + value.intf;
}

/// The record that a writer writes for a key at its generation-th change.
inline Record recordOf( Key key, std::uint32_t generation ) {
  Value value{ static_cast< std::uint32_t >( key % 512 ), generation, key + generation, 0 };
  value.check = checkOf( key, value );
  return { key, value };
}

/// Is it, whole, what some writer wrote for this key?
inline bool proves( Key key, Value const & value ) { return value.check == checkOf( key, value ); }

}  // namespace Bench
