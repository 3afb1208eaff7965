// Magic.h: the eight letters that a table's files begin with. Pure functions; any thread.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include <ntrace/Ntrace.h>
#include <quill/Links.h>

namespace Quill {

inline void magicIs( U32 ( &magic )[2], char const ( &letters )[9] ) {
  std::memcpy( magic, letters, sizeof magic );
}
inline bool isMagic( U32 const ( &magic )[2], char const ( &letters )[9] ) {
  return std::memcmp( magic, letters, sizeof magic ) == 0;
}

/// In hexadecimal, without leading zeros.
inline std::string inHex( U64 n ) {
  char text[17];
  std::snprintf( text, sizeof text, "%llx", static_cast< unsigned long long >( n ) );
  return text;
}
inline std::string inHex( U32 const ( &magic )[2] ) {
  return inHex( U64{ magic[1] } << 32 | magic[0] );
}

/// Says why a file is not believed, to whoever asked and to the trace. Returns false.
template< class... Part >
bool disbelieved( std::string & message, Ntrace::Handler const & handler, Part const &... part ) {
  std::ostringstream text;
  ( text << ... << part );
  message = text.str();
  handler.trace( 0, message );
  return false;
}

}  // namespace Quill
