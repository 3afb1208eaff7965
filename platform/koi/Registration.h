// Registration.h: what a module's source says to make its types known. koigen writes these lines;
// a module of types written by hand has them in its .module.cpp.
#pragma once

#include <ostream>

#include <koi/Reflection.h>
#include <koi/Value.h>
#include <koi/ValueText.h>

/// Compiles the cold bodies of a value type.
#define KOI_VALUE_BODIES( T )                                        \
  template class Koi::GenericValue< T >;                             \
  template Koi::String8 Koi::valueToStrep< T >( T const & );         \
  template T Koi::valueFromText< T >( Koi::String8::IteratorConst &, \
                                      Koi::String8::IteratorConst const & );

/// The same, and defines its type node.
#define KOI_VALUE( T )  \
  KOI_VALUE_BODIES( T ) \
  constinit Koi::KoiType const T::_koiType = Koi::Reflection< T >::node( T::koiName );

/// The same for an enumeration; behind the names stand its entries: { "none", 0 }, { "name", 1 }.
#define KOI_ENUM_TYPE( Ns, E, ... )                                                                \
  namespace Ns {                                                                                   \
  namespace {                                                                                      \
  constexpr Koi::EnumEntry koiEntries_##E[] = { __VA_ARGS__ };                                     \
  constexpr Koi::EnumType koiEnum_##E{ #Ns "::" #E, koiEntries_##E };                              \
  }                                                                                                \
  constinit Koi::KoiType const _koiType_##E =                                                      \
      Koi::Reflection< E >::node( koiEnum_##E.name, &koiEnum_##E );                                \
  Koi::Ptr< Koi::GenericIf const > E##Instance( unsigned value ) {                                 \
    return Koi::genericIf( static_cast< E >( value ) );                                            \
  }                                                                                                \
  Koi::Ptr< Koi::GenericIf const > E##Instance( Koi::String8 const & name ) {                      \
    return Koi::genericIf( static_cast< E >( koiEnum_##E.value( name ) ) );                        \
  }                                                                                                \
  Koi::String8 stringValue( E v ) { return koiEnum_##E.stringValue( v ); }                         \
  Koi::String8 valueToStrep( E const & v ) { return koiEnum_##E.stringValue( v ); }                \
  std::ostream & operator<<( std::ostream & out, E const & v ) { return out << stringValue( v ); } \
  void sequenceToValue( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end, \
                        E * v ) {                                                                  \
    *v = static_cast< E >( koiEnum_##E.sequenceToValue( it, end ) );                               \
  }                                                                                                \
  }                                                                                                \
  template class Koi::GenericValue< Ns::E >;                                                       \
  template Ns::E Koi::valueFromText< Ns::E >( Koi::String8::IteratorConst &,                       \
                                              Koi::String8::IteratorConst const & );

/// Registers a module: its types' names, one string with NULs between them, go into the section
/// .koi.type for whoever looks at the file; its nodes are registered when the library is loaded.
#define KOI_MODULE( Module, names, ... )                                                     \
  namespace {                                                                                \
  [[gnu::section( ".koi.type" ), gnu::used]] constexpr char koiTypeNames_##Module[] = names; \
  constexpr Koi::KoiType const * koiTypeNodes_##Module[] = { __VA_ARGS__ };                  \
  Koi::ModuleTypes const koiModuleTypes_##Module( koiTypeNodes_##Module );                   \
  }
