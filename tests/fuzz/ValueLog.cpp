// ValueLog.cpp: fuzz target: whatever bytes a type reads from an attribute log, it writes again
// byte for byte, but for the bits of a NaN; and the value's text reads back as the same value.

#include <cstdint>

#include <koi/Exception.h>

#include "Require.h"
#include "TypedInput.h"

namespace {

/// Whether the value has seconds that print so.
bool hasSeconds( Koi::KoiType const & type, std::string_view text, char const * printed ) {
  return Fuzz::holds( type, "Koi::Seconds" ) && text.find( printed ) != std::string_view::npos;
}

/// Whether the type may refuse the text of a value that it read from a log: a number out of the
/// range of a single-field type, which is checked later, and seconds that are no number.
bool refusable( Koi::KoiType const & type, std::string_view text ) {
  return type.kind == Koi::KoiType::single || hasSeconds( type, text, "nan" ) ||
         hasSeconds( type, text, "inf" );
}

/// What the bytes of a value become when they are read and written once more.
std::string rewritten( Koi::KoiType const & type, std::string const & bytes ) {
  Koi::NboAttrLog::In log( bytes.data(), bytes.size() );
  return Fuzz::logBytes( *type.logRead( log ) );
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

  Koi::String8 const text = value->strRep();
  std::string const details = Fuzz::described( input, text );
  std::string_view const taken = input.rest.substr( 0, input.rest.size() - log.left() );
  std::string const written = Fuzz::logBytes( *value );
  Fuzz::require( written == taken || hasSeconds( *input.type, text, "nan" ),
                 "a value writes the bytes that it read", details );
  Fuzz::require( rewritten( *input.type, written ) == written,
                 "a value reads back from its log as it is", details );
  requireTextReadsBack( input, *value );
  return 0;
}
