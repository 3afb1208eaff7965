// Reflection.h: the bodies behind a value's type node: wrapping, building from arguments, attribute
// operations. Included only where types are registered.
#pragma once

#include <array>
#include <utility>

#include <koi/CtorArguments.h>
#include <koi/ValueText.h>

namespace Koi {

template< class T >
GenericValue< T >::GenericValue( T const & value ) : value_( value ) {}
template< class T >
GenericValue< T >::~GenericValue() = default;
template< class T >
KoiType const * GenericValue< T >::type() const {
  return typeNodeOf< T >();
}
template< class T >
void const * GenericValue< T >::voidPtrIs( KoiType const * type ) const {
  return type == typeNodeOf< T >() ? &value_ : nullptr;
}
template< class T >
U32 GenericValue< T >::hash() const {
  if constexpr( !IsHashable< T >::value )
    GenericIfImpl::throwUnhashableException( typeNodeOf< T >() );
  else if constexpr( StringValue< T > )
    return value_.hash();
  else if constexpr( ClassValue< T > )
    return nestedHash( value_ );
  else
    return hashOfFields( value_ );
}
template< class T >
String8 GenericValue< T >::strRep() const {
  return valueToStrep( value_ );
}

/// The reflection entry points of one value type and the type node that lists them.
template< Value T >
class Reflection {
 public:
  static constexpr KoiType node( char const * name, EnumType const * enumType = nullptr,
                                 RecordOps const * record = nullptr ) {
    KoiType node{ name, sizeof( T ), kind(), attributes(), enumType };
    node.record = record;
    node.hashable = ClassValue< T > && hasHash< T >;
    node.genericIfFromStrRep = fromStrRep;
    node.genericIfFromCtorArgs = fromCtorArgs;
    node.genericIfFromVoidPointer = fromVoidPointer;
    node.genericIfAttributeOp = attributeOp;
    node.logWrite = write;
    node.logRead = read;
    if constexpr( hasOrder< T > )
      node.less = less;
    return node;
  }

 private:
  static constexpr KoiType::Kind kind() {
    return EnumValue< T >        ? KoiType::enumeration
           : SingleValue< T >    ? KoiType::single
           : StructureValue< T > ? KoiType::structure
                                 : KoiType::primitive;
  }

  static constexpr auto attributeTable() {
    if constexpr( SingleValue< T > )
      return std::array{ KoiAttribute{ T::koiField, typeNodeOf< typename T::KoiPrimitive >() } };
    else if constexpr( StructureValue< T > )
      return std::apply(
          []( auto... f ) {
            return std::array{ KoiAttribute{ f.name, typeNodeOf< typename decltype( f )::Type >(),
                                             decltype( f )::zeroAdmitted }... };
          },
          T::koiFields() );
    else
      return std::array< KoiAttribute, 0 >{};
  }
  static constexpr auto table = attributeTable();
  static constexpr std::span< KoiAttribute const > attributes() {
    return { table.data(), table.size() };
  }

  /// False, and *notHandled set, when the node is another type's.
  static bool handled( KoiType const * type, bool * notHandled ) {
    bool const ours = type == typeNodeOf< T >();
    if( !ours && notHandled )
      *notHandled = true;
    return ours;
  }

  static GenericIfPtr fromStrRep( KoiType const * type, String8 const & text, bool * notHandled ) {
    if( !handled( type, notHandled ) )
      return nullptr;
    String8::IteratorConst it = text.begin();
    T const v = valueFromText< T >( it, text.end() );
    strepToValueEnd( text, it );
    return genericIf( v );
  }

  static GenericIfPtr fromVoidPointer( KoiType const * type, void const * value,
                                       bool * notHandled ) {
    return handled( type, notHandled ) ? genericIf( *static_cast< T const * >( value ) ) : nullptr;
  }

  static GenericIfPtr fromCtorArgs( KoiType const * type, CtorArgs const & args,
                                    bool * notHandled ) {
    if( !handled( type, notHandled ) )
      return nullptr;
    requireCount( type->name, args, table.empty() ? 1 : table.size() );
    if constexpr( StructureValue< T > ) {
      T v;
      std::size_t index = 0;
      forEachField< T >( [&]( auto f ) {
        v.*f.member = argument< typename decltype( f )::Type >( args, index++ );
        checkField( f, v.*f.member );
      } );
      return genericIf( v );
    } else if constexpr( SingleValue< T > ) {
      T const v = T::koiUnchecked( argument< typename T::KoiPrimitive >( args, 0 ) );
      v.koiCheck();
      return genericIf( v );
    } else if constexpr( EnumValue< T > ) {
      if( args[0] && valueIn< U32 >( *args[0] ) )
        return genericIf( static_cast< T >( *valueIn< U32 >( *args[0] ) ) );
      if( args[0] && valueIn< String8 >( *args[0] ) )
        return genericIf(
            static_cast< T >( type->enumType->value( *valueIn< String8 >( *args[0] ) ) ) );
      return genericIf( argument< T >( args, 0 ) );
    } else {
      return genericIf( argument< T >( args, 0 ) );
    }
  }

  /// The argument's value. Raises ArgumentException when it holds another type.
  template< class Argument >
  static Argument const & argument( CtorArgs const & args, std::size_t index ) {
    return ArgumentOf< Argument >::from( typeNodeOf< T >()->name, args, index );
  }

  static GenericIfPtr attributeOp( GenericIf const & value, GenericIfOp const & op,
                                   CtorArgs const & args, bool * notHandled ) {
    if( !handled( value.type(), notHandled ) )
      return nullptr;
    T const & v = *valueIn< T >( value );
    constexpr int numFields = static_cast< int >( table.size() );
    constexpr int numAttributes = numFields + ( ClassValue< T > && hasHash< T > );
    if( op.attribute == GenericIfOp::noAttribute ) {
      T const * other = op.code == GenericIfOp::equal && args.size() == 1 && args[0]
                            ? valueIn< T >( *args[0] )
                            : nullptr;
      if( other )
        return genericIf( v == *other );
    } else if( op.attribute < 0 || op.attribute >= numAttributes ) {
      if( notHandled )
        *notHandled = true;
      return nullptr;
    } else if( op.attribute < numFields && op.code == GenericIfOp::read ) {
      return fieldOf( v, op.attribute );
    } else if( op.attribute == numFields && op.code == GenericIfOp::call ) {
      if constexpr( ClassValue< T > && hasHash< T > )
        return genericIf( v.hash() );
    }
    GenericIfImpl::throwOpNotSupportedException( op );
  }

  static GenericIfPtr fieldOf( T const & v, int wanted ) {
    GenericIfPtr result;
    if constexpr( SingleValue< T > )
      result = genericIf( v.value() );
    else if constexpr( StructureValue< T > ) {
      int index = 0;
      forEachField< T >( [&]( auto f ) {
        if( index++ == wanted )
          result = genericIf( v.*f.member );
      } );
    }
    return result;
  }

  static void write( void const * value, NboAttrLog::Out & out ) {
    logWrite( out, *static_cast< T const * >( value ) );
  }
  static GenericIfPtr read( NboAttrLog::In & in ) { return genericIf( logRead< T >( in ) ); }
  static bool less( void const * a, void const * b ) {
    return *static_cast< T const * >( a ) < *static_cast< T const * >( b );
  }
};

}  // namespace Koi
