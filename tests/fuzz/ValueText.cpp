// ValueText.cpp: fuzz target: a text that a type accepts is the text that it prints, and the value
// that was read survives its attribute log.

#include <cstdint>

#include <koi/Value.h>

#include "Require.h"
#include "TypedInput.h"

namespace {

Koi::GenericIfPtr valueOf( Koi::KoiType const & type, Koi::String8 const & text ) {
  return type.genericIfFromStrRep( &type, text, nullptr );
}

bool equal( Koi::GenericIf const & a, Koi::GenericIfPtr const & b ) {
  Koi::GenericIfOp const op{ Koi::GenericIfOp::noAttribute, Koi::GenericIfOp::equal };
  Koi::GenericIfPtr const answer = a.type()->genericIfAttributeOp( a, op, { b }, nullptr );
  return *Koi::valueIn< bool >( *answer );
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const * data, std::size_t size ) {
  Fuzz::TypedInput const input = Fuzz::typedInput( data, size );
  // Pseudowires have no parser: asking for one is a fault of the program that asks.
  if( !input.type || Fuzz::holds( *input.type, "Wirex::PseudowireIntfId" ) )
    return 0;

  Koi::GenericIfPtr value;
  try {
    value = valueOf( *input.type, input.rest );
  } catch( Koi::ParseException const & ) {
    return 0;
  } catch( Koi::RangeException const & ) {
    return 0;
  }

  Koi::String8 const printed = value->strRep();
  std::string const details = Fuzz::described( input, printed );
  // A bridge identifier takes more spellings than it prints.
  if( Fuzz::holds( *input.type, "Bridging::BridgeId" ) )
    Fuzz::require( printed.empty() || equal( *valueOf( *input.type, printed ), value ),
                   "what is printed reads back equal", details );
  else
    Fuzz::require( printed == input.rest, "only the canonical text is accepted", details );

  std::string const bytes = Fuzz::logBytes( *value );
  Koi::NboAttrLog::In log( bytes.data(), bytes.size() );
  Koi::GenericIfPtr const read = input.type->logRead( log );
  Fuzz::require( log.left() == 0, "a value reads all that it wrote", details );
  Fuzz::require( equal( *read, value ), "a value reads back equal from its log", details );
  Fuzz::require( !input.type->hashable || read->hash() == value->hash(), "equal values hash alike",
                 details );
  return 0;
}
