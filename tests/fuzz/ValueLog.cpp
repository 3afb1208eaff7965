// ValueLog.cpp: fuzz target: whatever bytes a type reads from an attribute log, it writes again
// byte for byte; and the value's text reads back as the same value.

#include <cstdint>

#include <koi/Exception.h>

#include "Require.h"
#include "TypedInput.h"

namespace {

/// Whether the type may refuse the text of a value that it read from a log: a number out of the
/// range of a single-field type, which is checked later, and seconds that are no number.
bool refusable( Koi::KoiType const & type, std::string_view text ) {
  bool const noNumber =
      text.find( "nan" ) != std::string_view::npos || text.find( "inf" ) != std::string_view::npos;
  return type.kind == Koi::KoiType::single || ( Fuzz::holds( type, "Koi::Seconds" ) && noNumber );
}

void requireTextReadsBack( Fuzz::TypedInput const & input, Koi::GenericIf const & value ) {
  // Pseudowires have no parser, and a bridge identifier of an unknown kind has no text.
  for( char const * withoutText : { "Wirex::PseudowireIntfId", "Bridging::BridgeId" } )
    if( Fuzz::holds( *input.type, withoutText ) )
      return;
  Koi::String8 const text = value.strRep();
  std::string const details = Fuzz::described( input, text );
  try {
    auto const again = input.type->genericIfFromStrRep( input.type, text, nullptr );
    Fuzz::require( Fuzz::logBytes( *again ) == Fuzz::logBytes( value ),
                   "a value's text reads back as the value", details );
  } catch( Koi::Exception const & refusal ) {
    Fuzz::require( refusable( *input.type, text.view() ), refusal.what(), details );
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const * data, std::size_t size ) {
  Fuzz::TypedInput const input = Fuzz::typedInput( data, size );
  if( !input.type )
    return 0;

  Koi::NboAttrLog::In log( input.rest.data(), input.rest.size() );
  Koi::GenericIfPtr value;
  try {
    value = input.type->logRead( log );
  } catch( Koi::ParseException const & ) {
    return 0;
  } catch( Koi::RangeException const & ) {
    return 0;
  }

  std::string_view const taken = input.rest.substr( 0, input.rest.size() - log.left() );
  Fuzz::require( Fuzz::logBytes( *value ) == taken, "a value writes the bytes that it read",
                 Fuzz::described( input, value->strRep() ) );
  requireTextReadsBack( input, *value );
  return 0;
}
