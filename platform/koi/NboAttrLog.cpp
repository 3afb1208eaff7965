#include <koi/NboAttrLog.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include <koi/Exception.h>

namespace Koi {

void NboAttrLog::Out::grow( std::size_t capacity ) {
  capacity = std::max( { capacity, capacity_ * 2, std::size_t{ 256 } } );
  auto * bytes = static_cast< U8 * >( std::realloc( data_.get(), capacity ) );
  if( !bytes )
    throw std::bad_alloc();
  data_.release();
  data_.reset( bytes );
  capacity_ = capacity;
}

void NboAttrLog::Out::string( std::string_view bytes ) {
  if( bytes.size() > maxStringSize )
    throwRangeException( "attribute log: a string of more than 16777216 bytes" );
  U8 * at = storeBig( room( 4 + bytes.size() ), static_cast< U32 >( bytes.size() ) );
  std::copy( bytes.begin(), bytes.end(), at );
}

bool NboAttrLog::In::nextbool() {
  U8 const byte = *take( 1 );
  if( byte > 1 ) {
    --at_;
    refuse( "a bool was expected, not the byte " + std::to_string( byte ) );
  }
  return byte == 1;
}

String8 NboAttrLog::In::nextString() {
  U8 const * const start = at_;
  std::size_t const size = nextU32();
  if( size > maxStringSize || size > left() ) {
    std::size_t const rest = left();
    at_ = start;
    refuse( "a string of " + std::to_string( size ) + " bytes was announced, " +
            std::to_string( rest ) + " are left" );
  }
  return String8( std::string_view( reinterpret_cast< char const * >( take( size ) ), size ) );
}

void NboAttrLog::In::refuse( std::string const & what ) const {
  throwParseException( "attribute log: at byte " + std::to_string( at_ - begin_ ) + ": " + what );
}

void NboAttrLog::In::refuseShort( std::size_t wanted ) const {
  refuse( std::to_string( wanted ) + " bytes were expected, " + std::to_string( left() ) +
          " are left" );
}

}  // namespace Koi
