// MgmtIntfId.h: the identifiers of management interfaces: mgmt0, and mgmt1/1 on a supervisor
// module. Any program may use it, on any thread.
#pragma once

#include <wirex/GenericIntfId.h>
#include <wirex/PortPlace.h>

namespace Wirex {

class MgmtIntfId {
 public:
  MgmtIntfId() = delete;

  static constexpr bool isMgmtIntfId( IntfId const & intfId ) {
    return GenericIntfId( intfId ).typeId() == GenericIntfId::managementType;
  }

  /// The identifier of that place; a module of 0 is a switch without modules. Refuses with a
  /// RangeException "MgmtIntfId::module > 1023 not allowed" or "MgmtIntfId::port > 1023 not
  /// allowed".
  static constexpr IntfId intfId( Koi::U32 module, Koi::U32 port ) {
    if( module > PortPlace::moduleMax )
      Koi::throwRangeException( "MgmtIntfId::module > 1023 not allowed" );
    if( port > PortPlace::portMax )
      Koi::throwRangeException( "MgmtIntfId::port > 1023 not allowed" );
    GenericIntfId made{ IntfId() };
    made.typeIdIs( GenericIntfId::managementType );
    made.partIs( 1, PortPlace{ module, port, 0 }.part() );
    return made.intfId();
  }

  /// 0 on a switch without modules; needs a management interface.
  static constexpr Koi::U32 module( IntfId const & intfId ) { return place( intfId ).module; }

  /// Needs a management interface.
  static constexpr Koi::U32 port( IntfId const & intfId ) { return place( intfId ).port; }

 private:
  static constexpr PortPlace place( IntfId const & intfId ) {
    KOI_ASSERT( isMgmtIntfId( intfId ) );
    return PortPlace::ofPart( GenericIntfId( intfId ).part( 1 ) );
  }
};

}  // namespace Wirex
