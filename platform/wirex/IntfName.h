// IntfName.h: the grammar of interface names. Private to this room: everybody else asks IntfId.
//
// I1  intfOfName( nameOfIntf( id ) ) is id, for every one of the 2^64 identifiers.
// I2  nameOfIntf( intfOfName( name ) ) is name, for every name that is not refused.
#pragma once

#include <wirex/IntfId.h>

namespace Wirex {

/// The one name of an identifier.
Koi::String8 nameOfIntf( IntfId const & intfId );

/// The identifier of a name. Refuses a name that no identifier prints: with a RangeException when a
/// number in it is out of range, else with a ParseException; both texts begin "Interface name
/// 'NAME'" (a name of over 64 bytes is not repeated).
IntfId intfOfName( Koi::String8 const & name );

}  // namespace Wirex
