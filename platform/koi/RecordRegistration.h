// RecordRegistration.h: what a module's source says, besides Registration.h, of a value that lies
// in the slots of a table. koigen writes these lines.
#pragma once

#include <koi/CtorArguments.h>
#include <koi/RecordOps.h>
#include <koi/Registration.h>

namespace Koi {

/// The operations of a record: of a class that has Key, Value, valueType, keySize, valueSize,
/// putKey(), put(), key(), value() and hash().
template< class Record >
class RecordReflection {
  static GenericIfPtr value( U32 const * words ) { return genericIf( Record::value( words ) ); }
  static GenericIfPtr key( U32 const * words ) { return genericIf( Record::key( words ) ); }
  static void put( GenericIf const & value, U32 * words ) {
    Record::put( in< typename Record::Value >( value ), words );
  }
  static void putKey( GenericIf const & key, U32 * words ) {
    Record::putKey( in< typename Record::Key >( key ), words );
  }
  template< class T >
  static T const & in( GenericIf const & wrapper ) {
    T const * const v = valueIn< T >( wrapper );
    if( !v )
      throwOtherArgument( Record::valueType, { GenericIfPtr( &wrapper ) }, 0,
                          typeNodeOf< T >()->name );
    return *v;
  }

 public:
  static constexpr RecordOps ops{ Record::keySize, Record::valueSize, Record::hash, value, key, put,
                                  putKey };
};

}  // namespace Koi

/// KOI_VALUE for a value that lies in slots as the record, the second argument, says.
#define KOI_TABLE_VALUE( T, ... )                                        \
  KOI_VALUE_BODIES( T )                                                  \
  constinit Koi::KoiType const T::_koiType = Koi::Reflection< T >::node( \
      T::koiName, nullptr, &Koi::RecordReflection< __VA_ARGS__ >::ops );
