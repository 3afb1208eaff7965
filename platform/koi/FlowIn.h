// FlowIn.h: what the peer of an attribute log says of one attribute, and how it is applied: through
// the mutators, as the peer's change. FlowOut.h says what is in it. Used by the Mirror and by the
// attributes.
#pragma once

#include <koi/FlowOut.h>
#include <koi/KoiNboAttrLogSa.h>
#include <koi/Mirror.h>

namespace Koi {

class KOI_PUBLIC FlowIn {
 public:
  /// What refers to something that is not here yet is looked at again when something came, and a
  /// last time, when it gets what it gets, at the end of its flush.
  enum Pass { first, again, last };

  FlowIn( KoiNboAttrLogSa & adapter_, unsigned attribute_, NboAttrLog::In in_ )
      : adapter( adapter_ ),
        attribute( attribute_ ),
        in( in_ ),
        since_( adapter_.mirror().numApplied() ) {}
  /// One operation that waited.
  FlowIn( KoiNboAttrLogSa & adapter_, unsigned attribute_, WaitingOperation const & operation,
          Pass pass_ )
      : adapter( adapter_ ),
        attribute( attribute_ ),
        in( operation.bytes.data(), operation.bytes.size() ),
        pass( pass_ ),
        since_( operation.since ) {}

  KoiNboAttrLogSa & adapter;
  unsigned const attribute;
  NboAttrLog::In in;
  Pass const pass = first;
  bool isCrossed = false;  ///< the proxy changed the queue without knowing what it was here

  Mirror & mirror() const { return adapter.mirror(); }

  /// Raises ParseException for what is no operation.
  LogOp op();

  /// Where a reference was read: what it refers to, null where nothing; false when that is not here
  /// yet, or no more.
  bool reference( Ptr< Entity > & target );
  /// The member of that key refers to the target from now on: the proxy is to hear when that leaves
  /// the tree.
  void refersTo( Entity const * target, std::string key ) const;
  bool isFromProxy() const { return mirror().role() == Mirror::source; }

  /// Reads a value or a reference. What is out of its range, or refers to an entity of another
  /// type, is refused and left; the log stands behind it all the same.
  enum Arrival { here, refused, notYet };
  template< Value T >
  Arrival read( T & v );
  template< class T >
  Arrival read( Ptr< T > & v );

  /// Makes a change of the peer's. False when it is refused, which is counted.
  template< class Change >
  bool change( Change const & change ) {
    return changed( callOf< Change >, &change );
  }
  /// Makes it unless it is refused.
  template< class Change >
  void changeIfAdmitted( Change const & change ) {
    changedIfAdmitted( callOf< Change >, &change );
  }
  void refuse( std::string const & why );
  /// The attribute changed as the peer says, otherwise than by a mutator: the other logs tell that.
  void changed() const;

  /// The attribute, or the member of that key, was changed here, and the source has not
  /// acknowledged that: a proxy does not heed what the source says of it.
  bool isOurs() const { return mirror().isWritingProxy() && adapter.isUnsettled( attribute ); }
  template< class C >
  bool isOurs( C const & members, typename C::Key const & k ) const {
    return isOurs() && ( adapter.isFresh( attribute ) ||
                         members.koiIsUnacked( adapter.place( attribute ), k ) );
  }
  /// True when the child is another one than that of which the peer speaks now.
  bool isAnother( Entity const & child, U64 incarnation ) const;

  /// Tells the proxy what is here instead of what it sent.
  void answer( std::string key ) const {
    if( isFromProxy() )
      adapter.answer( attribute, std::move( key ) );
  }
  /// A proxy cannot take null from the source, which could not take the target, for it had left the
  /// tree there: the target is told as what it is now.
  void insist() const {
    if( mirror().isWritingProxy() )
      adapter.insist( attribute );
  }
  /// What was read from `operation` on refers to something that is not here yet: it is applied
  /// again when something came. `key` is empty but for members.
  void wait( std::string const & key, NboAttrLog::In const & operation ) const {
    adapter.unresolvedIs( attribute, key, { bytesBetween( operation, in ), since_ } );
  }
  /// It is what waited, or takes the place of what did. True when that came with an earlier flush.
  bool waitEnds( std::string const & key ) const {
    return adapter.unresolvedDel( attribute, key ) || isLate();
  }
  /// It came with an earlier flush.
  bool isLate() const { return since_ != mirror().numApplied(); }
  /// The bytes from one place in the log to another.
  static std::string bytesBetween( NboAttrLog::In from, NboAttrLog::In const & to ) {
    std::size_t const size = from.left() - to.left();
    return { reinterpret_cast< char const * >( from.take( size ) ), size };
  }

 private:
  /// Raises ReadOnlyException where the peer may not change the entity.
  void admit() const;

  using Call = void ( * )( void const * change );
  template< class Change >
  static void callOf( void const * change ) {
    ( *static_cast< Change const * >( change ) )();
  }
  bool changed( Call call, void const * change );
  void changedIfAdmitted( Call call, void const * change );
  void remotely( Call call, void const * change );

  U64 const since_;
  bool isGone_ = false;  // the proxy refers to what was here
};

/// Steps over a value, whatever its ranges.
template< Value T >
void logSkip( NboAttrLog::In & in ) {
  if constexpr( logSize< T >() != 0 )
    in.take( logSize< T >() );
  else if constexpr( StringValue< T > )
    in.nextString();
  else if constexpr( SingleValue< T > )
    logSkip< typename T::KoiPrimitive >( in );
  else
    forEachField< T >( [&]( auto f ) { logSkip< typename decltype( f )::Type >( in ); } );
}

template< Value T >
FlowIn::Arrival FlowIn::read( T & v ) {
  NboAttrLog::In const start = in;
  try {
    v = logRead< T >( in );
    return here;
  } catch( RangeException const & refusal ) {
    in = start;
    logSkip< T >( in );
    refuse( refusal.what() );
    return refused;
  }
}

template< class T >
FlowIn::Arrival FlowIn::read( Ptr< T > & v ) {
  Ptr< Entity > target;
  if( !reference( target ) )
    return isGone_ ? refused : notYet;
  v = dynamic_cast< T * >( target.ptr() );
  if( target && !v ) {
    refuse( "a reference to " + std::string( target->fullName() ) + ", which is of type " +
            target->koiType()->name + ", not " + T::koiName );
    return refused;
  }
  return here;
}

}  // namespace Koi
