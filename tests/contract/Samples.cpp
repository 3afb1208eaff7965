#include "contract/Samples.h"

#include <cmath>
#include <limits>
#include <random>

#include <koi/Value.h>

namespace Tests {
namespace {

using Koi::CtorArgs;

using namespace std::string_view_literals;
// One to a line, these would be a third of the file.
// clang-format off
constexpr Koi::U64 numbers[] = {
    0, 1, 2, 5, 9, 10, 16, 127, 128, 255, 256, 4094, 4095, 4096, 32768, 65535, 65536, 0xffffff,
    0x1000000, 0x1ffffff, 0x200000a, 0x2ffffff, 0x3000000, 0x7fffffff, 0x80000000, 0xffffffff,
    0x100000000, 0x0102030405060708, 0x8000000000000000, ~0ull };
constexpr std::string_view strings[] = {
    "", "a", "eth1", "\0"sv, "a\0b"sv, "'", "\\", "\\'", "\n", "\\n", "\x7f\x80", "\xff",
    "z\xc3\xa9", "\"", "%s%n", " tab\t", "0123456789", ", 'vlanId': 1})",
    "Value('Bridging::VlanId', ** {" };
// clang-format on

template< class T >
void addNumbers( std::vector< GenericIfPtr > & to ) {
  for( Koi::U64 n : numbers )
    if( n <= static_cast< Koi::U64 >( std::numeric_limits< T >::max() ) )
      to.push_back( Koi::genericIf( static_cast< T >( n ) ) );
}

template< class T >
void addStrings( std::vector< GenericIfPtr > & to ) {
  std::string every;
  for( int byte = 255; byte >= 0; --byte )
    every += static_cast< char >( byte );
  for( std::string_view text : strings )
    to.push_back( Koi::genericIf( T( text ) ) );
  to.push_back( Koi::genericIf( T( every ) ) );
}

/// The samples of a primitive; none for a type that is none.
std::vector< GenericIfPtr > primitives( KoiType const * type ) {
  std::vector< GenericIfPtr > made;
  if( type == &Koi::koiTypeU8 )
    addNumbers< Koi::U8 >( made );
  if( type == &Koi::koiTypeU16 )
    addNumbers< Koi::U16 >( made );
  if( type == &Koi::koiTypeU32 )
    addNumbers< Koi::U32 >( made );
  if( type == &Koi::koiTypeU64 )
    addNumbers< Koi::U64 >( made );
  if( type == &Koi::koiTypeI32 ) {
    addNumbers< Koi::I32 >( made );
    for( Koi::I32 n : { -1, -10, -11, -4095, std::numeric_limits< Koi::I32 >::min() } )
      made.push_back( Koi::genericIf( n ) );
  }
  if( type == &Koi::koiTypeBool )
    made = { Koi::genericIf( false ), Koi::genericIf( true ) };
  if( type == &Koi::koiTypeSeconds ) {
    using Limits = std::numeric_limits< Koi::Seconds >;
    for( Koi::Seconds s : { 0.0, -0.0, 1.0, 0.1, 1.0 / 3, -2.5, 1445512345.678901, 1e22, 1e-7,
                            Limits::max(), Limits::min(), Limits::denorm_min(), Limits::infinity(),
                            -Limits::infinity(), Limits::quiet_NaN() } )
      made.push_back( Koi::genericIf( s ) );
  }
  if( type == &Koi::koiTypeString8 )
    addStrings< Koi::String8 >( made );
  if( type == &Koi::koiTypeName )
    addStrings< Koi::Name >( made );
  return made;
}

std::vector< GenericIfPtr > enumerators( KoiType const * type ) {
  std::vector< GenericIfPtr > made;
  Koi::U32 most = 0;
  auto add = [&]( Koi::U32 number ) {
    made.push_back( type->genericIfFromVoidPointer( type, &number, nullptr ) );
    most = std::max( most, number );
  };
  for( auto const & entry : type->enumType->entries )
    add( entry.value );
  add( most + 1 );
  add( 0xffffffff );
  return made;
}

/// A type written by hand shows nothing but its log: its samples are patterns of that size.
std::vector< GenericIfPtr > patterns( KoiType const * type ) {
  std::size_t size = 0;
  for( bool fits = false; !fits; ) {
    std::string const zeros( ++size, '\0' );
    Koi::NboAttrLog::In in( zeros.data(), zeros.size() );
    try {
      type->logRead( in );
      fits = true;
    } catch( Koi::ParseException const & ) {
      // Too short still.
    }
  }
  std::vector< GenericIfPtr > made{ ofLog( type, std::string( size, '\0' ) ),
                                    ofLog( type, std::string( size, '\xff' ) ) };
  for( std::size_t bit = 0; bit < 8 * size; bit += 5 ) {
    std::string bytes( size, '\0' );
    bytes[size - 1 - bit / 8] = static_cast< char >( 1 << bit % 8 );
    made.push_back( ofLog( type, bytes ) );
    bytes[size - 1] ^= '\x20';
    made.push_back( ofLog( type, bytes ) );
  }
  return made;
}

std::vector< GenericIfPtr > singles( KoiType const * type ) {
  std::vector< GenericIfPtr > made;
  for( auto const & value : samplesOf( type->fields[0].type ) ) {
    try {
      made.push_back( type->genericIfFromCtorArgs( type, CtorArgs{ value }, nullptr ) );
    } catch( Koi::RangeException const & ) {
      // Outside the type's bounds.
    }
  }
  return made;
}

/// Every field in turn over its own samples, the others as they are first; then mixtures.
std::vector< GenericIfPtr > structures( KoiType const * type ) {
  std::vector< std::vector< GenericIfPtr > > choices;
  CtorArgs first;
  for( auto const & field : type->fields ) {
    choices.push_back( fewSamplesOf( field.type, 5 ) );
    first.push_back( choices.back()[0] );
  }
  std::vector< GenericIfPtr > made;
  auto add = [&]( CtorArgs const & args ) {
    made.push_back( type->genericIfFromCtorArgs( type, args, nullptr ) );
  };
  add( first );
  for( std::size_t i = 0; i < choices.size(); ++i )
    for( std::size_t j = 1; j < choices[i].size() && j < 4; ++j ) {
      CtorArgs args = first;
      args[i] = choices[i][j];
      add( args );
    }
  std::mt19937 random( 1 );
  for( int n = 0; n < 8; ++n ) {
    CtorArgs args;
    for( auto const & field : type->fields ) {
      auto const all = samplesOf( field.type );
      args.push_back( all[random() % all.size()] );
    }
    add( args );
  }
  return made;
}

}  // namespace

std::vector< KoiType const * > valueTypes() {
  auto types = Koi::typeNodes();
  std::erase_if( types, []( KoiType const * type ) {
    return type->kind == KoiType::entity || type->kind == KoiType::reactor;
  } );
  return types;
}

std::vector< GenericIfPtr > samplesOf( KoiType const * type ) {
  if( type->kind == KoiType::enumeration )
    return enumerators( type );
  if( type->kind == KoiType::single )
    return singles( type );
  if( type->kind == KoiType::structure )
    return structures( type );
  auto const made = primitives( type );
  return made.empty() ? patterns( type ) : made;
}

std::vector< GenericIfPtr > fewSamplesOf( KoiType const * type, std::size_t most ) {
  auto const all = samplesOf( type );
  if( all.size() <= most )
    return all;
  std::vector< GenericIfPtr > few;
  for( std::size_t i = 0; i < most; ++i )
    few.push_back( all[i * ( all.size() - 1 ) / ( most - 1 )] );
  return few;
}

std::string logOf( GenericIf const & v ) {
  Koi::Ptr< Koi::NboAttrLog::Out > out = new Koi::NboAttrLog::Out;
  v.type()->logWrite( v.voidPtrIs( v.type() ), *out );
  return out->size() ? std::string( reinterpret_cast< char const * >( out->data() ), out->size() )
                     : std::string();
}

GenericIfPtr ofLog( KoiType const * type, std::string const & bytes ) {
  Koi::NboAttrLog::In in( bytes.data(), bytes.size() );
  GenericIfPtr const v = type->logRead( in );
  if( in.left() != 0 )
    Koi::throwParseException( std::to_string( in.left() ) + " bytes are left over" );
  return v;
}

GenericIfPtr fieldOf( GenericIf const & v, std::size_t index ) {
  return v.type()->genericIfAttributeOp( v, { static_cast< int >( index ), 0 }, {}, nullptr );
}

std::vector< GenericIfPtr > fieldsOf( GenericIf const & v ) {
  std::vector< GenericIfPtr > fields;
  for( std::size_t i = 0; i < v.type()->fields.size(); ++i )
    fields.push_back( fieldOf( v, i ) );
  return fields;
}

std::vector< GenericIfPtr > allIn( GenericIf const & v ) {
  std::vector< GenericIfPtr > all{ &v };
  for( auto const & field : fieldsOf( v ) )
    for( auto const & inside : allIn( *field ) )
      all.push_back( inside );
  return all;
}

bool equal( GenericIf const & a, GenericIf const & b ) {
  auto const result =
      a.type()->genericIfAttributeOp( a, { -1, 9 }, { GenericIfPtr( &b ) }, nullptr );
  return *Koi::valueIn< bool >( *result );
}

bool less( GenericIf const & a, GenericIf const & b ) {
  return a.type()->less( a.voidPtrIs( a.type() ), b.voidPtrIs( b.type() ) );
}

bool isString( KoiType const * type ) {
  return type == &Koi::koiTypeString8 || type == &Koi::koiTypeName;
}

std::string hexOf( std::string const & bytes ) {
  std::string digits;
  for( unsigned char byte : bytes )
    ( digits += "0123456789abcdef"[byte >> 4] ) += "0123456789abcdef"[byte & 15];
  return digits;
}

std::string ofHex( std::string const & digits ) {
  std::string bytes;
  for( std::size_t i = 0; i + 1 < digits.size(); i += 2 )
    bytes += static_cast< char >( std::stoi( digits.substr( i, 2 ), nullptr, 16 ) );
  return bytes;
}

std::string hexOf( Koi::U32 number ) {
  std::string bytes;
  for( int shift = 24; shift >= 0; shift -= 8 )
    bytes += static_cast< char >( number >> shift );
  return hexOf( bytes );
}

}  // namespace Tests
