// GoldenTest.cpp: models in, headers and sources out, compared whole with the files beside them.
#include <gtest/gtest.h>
#include <koigen/Checker.h>
#include <koigen/Emitter.h>
#include <koigen/Files.h>

#include <algorithm>

namespace {

using namespace Koigen;

std::string golden( std::string const & file ) {
  bool found = false;
  std::string const text = contentOf( std::string( KOIGEN_GOLDEN "/" ) + file, &found );
  EXPECT_TRUE( found ) << file;
  return text;
}

Model loadedGolden( std::vector< std::string > names, std::vector< std::string > imports = {} ) {
  for( auto & name : names )
    name = std::string( KOIGEN_GOLDEN "/" ) + name + ".koi";
  return loaded( { names, std::move( imports ) } );
}

Module const & moduleOf( Model const & model, std::string const & name ) {
  return *std::find_if( model.modules.begin(), model.modules.end(),
                        [&]( auto const & m ) { return m.name == name; } );
}

std::string headerOf( Model const & model, std::string const & name ) {
  return headerOf( model, moduleOf( model, name ) );
}

TEST( Golden, everyFormOfAValue ) {
  auto const model = loadedGolden( { "Values" }, { KOIGEN_GOLDEN } );
  EXPECT_EQ( headerOf( model, "Values" ), golden( "Values.h.golden" ) );
  EXPECT_EQ( sourcesOf( model, moduleOf( model, "Values" ), 1 ),
             std::vector< std::string >{ golden( "Values.module.cpp.golden" ) } );
}

TEST( Golden, valuesOfTables ) {
  auto const model = loadedGolden( { "Slots" }, { KOIGEN_GOLDEN } );
  EXPECT_EQ( headerOf( model, "Slots" ), golden( "Slots.h.golden" ) );
  EXPECT_EQ( sourcesOf( model, moduleOf( model, "Slots" ), 1 ),
             std::vector< std::string >{ golden( "Slots.module.cpp.golden" ) } );
}

TEST( Golden, aModuleOfForeignTypesIsNotWritten ) {
  auto const model = loadedGolden( { "Addresses" } );
  EXPECT_TRUE( isForeign( moduleOf( model, "Addresses" ) ) );
}

TEST( Golden, aNameThatANearerNamespaceHidesIsWrittenFromTheOutside ) {
  auto const model = parsedText( R"(module M;
namespace A {
/// d
value V : u8;
}
namespace B::A {
/// d
value W : u8;
/// d
value X {
  v : A::V;   /// d
  w : A::W;   /// d
}
}
)",
                                 "M.koi" );
  std::string const text = headerOf( model, "M" );
  EXPECT_NE( text.find( "X( ::A::V const & v, A::W const & w )" ), text.npos ) << text;
}

TEST( Golden, theOrderOfTheCallChangesNothing ) {
  auto const forth = loadedGolden( { "Addresses", "Values", "Uses", "Yard" } );
  auto const back = loadedGolden( { "Yard", "Uses", "Values", "Addresses" } );
  for( auto const * name : { "Values", "Uses", "Yard" } )
    EXPECT_EQ( headerOf( forth, name ), headerOf( back, name ) ) << name;
}

TEST( Golden, whatIsOnlyPointedToIsDeclaredForward ) {
  auto const text = headerOf( loadedGolden( { "Addresses", "Values", "Uses", "Yard" } ), "Uses" );
  std::string const head = R"(#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/Values.h>
#include <net/Address.h>
#include <net/Place.h>
#include <net/PortBase.h>

namespace Shop { class Later; }
namespace Yard { class Gate; }

namespace Shop {

/// A port of the shop.
)";
  std::string const tail = R"(
}  // namespace Shop

// What was only pointed to.
#include <Lumo/Yard.h>
)";
  EXPECT_EQ( text.substr( text.find( "#pragma" ), head.size() ), head );
  EXPECT_TRUE( text.ends_with( tail ) ) << text;
}

TEST( Golden, importedModulesKeepTheirOwnPrefix ) {
  Call call = { { KOIGEN_GOLDEN "/Uses.koi", KOIGEN_GOLDEN "/Yard.koi" }, { KOIGEN_GOLDEN } };
  call.prefix = "Mine/";
  call.importPrefix = "Theirs/";
  auto const model = loaded( call );
  auto const text = headerOf( model, "Uses" );
  EXPECT_NE( text.find( "#include <Theirs/Values.h>\n" ), text.npos );
  EXPECT_NE( text.find( "#include <Mine/Yard.h>\n" ), text.npos );
  EXPECT_TRUE( moduleOf( model, "Values" ).imported );
}

}  // namespace
