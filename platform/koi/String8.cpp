#include <koi/String8.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <ostream>

#include <koi/Exception.h>

namespace Koi {

String8::String8( std::string_view bytes ) {
  if( bytes.empty() )
    return;
  if( bytes.size() > std::numeric_limits< U32 >::max() - sizeof( Rep ) - 1 )
    throwRangeException( "String8::bytes > 4294967286 not allowed" );
  void * memory = std::malloc( sizeof( Rep ) + bytes.size() + 1 );
  if( !memory )
    throw std::bad_alloc();
  rep_ = new( memory ) Rep{ {}, static_cast< U32 >( bytes.size() ) };
  rep_->refs.add();
  std::memcpy( rep_->bytes(), bytes.data(), bytes.size() );
  rep_->bytes()[bytes.size()] = '\0';
}

void String8::release( Rep * rep ) {
  rep->~Rep();
  std::free( rep );
}

std::ostream & operator<<( std::ostream & out, String8 const & text ) { return out << text.view(); }

std::ostream & operator<<( std::ostream & out, Name const & name ) { return out << name.view(); }

String8 format( char const * pattern, ... ) {
  va_list arguments, again;
  va_start( arguments, pattern );
  va_copy( again, arguments );
  int const size = std::vsnprintf( nullptr, 0, pattern, arguments );
  va_end( arguments );
  std::string text( size > 0 ? static_cast< std::size_t >( size ) : 0, '\0' );
  std::vsnprintf( text.data(), text.size() + 1, pattern, again );
  va_end( again );
  return String8( text );
}

}  // namespace Koi
