// IntfId.cpp: an identifier in texts.

#include <wirex/IntfId.h>

#include "IntfName.h"

namespace Wirex {

Koi::String8 IntfId::stringValue() const { return nameOfIntf( *this ); }

void IntfId::handleInitialized( Koi::String8 const & name ) { *this = intfOfName( name ); }

Koi::String8 IntfId::koiText() const { return Koi::valueToStrep( stringValue() ); }

IntfId IntfId::koiParsed( Koi::String8::IteratorConst & it,
                          Koi::String8::IteratorConst const & end ) {
  return IntfId( Koi::stringFromText( it, end ) );
}

}  // namespace Wirex
