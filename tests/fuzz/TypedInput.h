// TypedInput.h: an input of the value targets: the name of a registered value type, a newline, then
// what is to be read as a value of that type.
//
// The name, not a number, chooses the type: a corpus keeps its meaning when types are added.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <koi/GenericIf.h>
#include <koi/KoiType.h>
#include <koi/NboAttrLog.h>

namespace Fuzz {

/// All registered value types.
inline std::vector< Koi::KoiType const * > const & valueTypes() {
  static auto const types = [] {
    auto all = Koi::typeNodes();
    std::erase_if( all, []( auto const * type ) { return !type->logRead; } );
    return all;
  }();
  return types;
}

struct TypedInput {
  Koi::KoiType const * type;  // null when the name is that of no value type
  std::string_view rest;
};

inline TypedInput typedInput( unsigned char const * data, std::size_t size ) {
  std::string_view const all( reinterpret_cast< char const * >( data ), size );
  std::size_t const nameSize = std::min( all.find( '\n' ), size );
  for( auto const * type : valueTypes() )
    if( type->name == all.substr( 0, nameSize ) )
      return { type, all.substr( std::min( nameSize + 1, size ) ) };
  return { nullptr, {} };
}

/// Whether a value of the type is, or has within it, one of that other type.
inline bool holds( Koi::KoiType const & type, std::string_view other ) {
  return type.name == other || std::ranges::any_of( type.fields, [&]( auto const & field ) {
           return holds( *field.type, other );
         } );
}

/// The attribute-log bytes of a wrapped value.
inline std::string logBytes( Koi::GenericIf const & value ) {
  Koi::Ptr< Koi::NboAttrLog::Out > const out = new Koi::NboAttrLog::Out;
  value.type()->logWrite( value.voidPtrIs( value.type() ), *out );
  return { reinterpret_cast< char const * >( out->data() ), out->size() };
}

/// For messages: the type, what was read, and what was printed.
inline std::string described( TypedInput const & input, std::string_view printed ) {
  return std::string( input.type->name ) + "\nread:    " + std::string( input.rest ) +
         "\nprinted: " + std::string( printed );
}

}  // namespace Fuzz
