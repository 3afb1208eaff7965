// RegistryTest.cpp: types are found by name, and the names stand in the files for who only looks at
// those.

#include <link.h>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

#include <gtest/gtest.h>

#include <koi/Exception.h>

#include "contract/Samples.h"
#include "contract/Shapes.h"

using namespace Tests;

namespace {

/// The names in the section .koi.type of a program or library of this machine's word size.
std::multiset< std::string > typeNamesOf( char const * path ) {
  std::ifstream file( path, std::ios::binary );
  std::string const bytes{ std::istreambuf_iterator< char >( file ), {} };
  auto const header = [&]( auto & into, std::size_t at ) {
    if( at + sizeof into <= bytes.size() )
      std::memcpy( &into, bytes.data() + at, sizeof into );
  };
  ElfW( Ehdr ) elf{};
  ElfW( Shdr ) names{}, section{};
  header( elf, 0 );
  header( names, elf.e_shoff + elf.e_shstrndx * sizeof names );
  std::multiset< std::string > found;
  for( std::size_t i = 0; i < elf.e_shnum; ++i ) {
    header( section, elf.e_shoff + i * sizeof section );
    if( std::strcmp( bytes.data() + names.sh_offset + section.sh_name, ".koi.type" ) != 0 )
      continue;
    char const * end = bytes.data() + section.sh_offset + section.sh_size;
    for( char const * at = end - section.sh_size; at < end; at += std::strlen( at ) + 1 )
      if( *at )  // between two modules may be a gap
        found.insert( at );
  }
  return found;
}

TEST( Registry, aTypeIsFoundByItsName ) {
  for( KoiType const * type : Koi::typeNodes() )
    EXPECT_EQ( Koi::typeNode( type->name ), type );
  try {
    Koi::typeNode( "Bridging::NoSuchType" );
    FAIL();
  } catch( Koi::UnknownTypeException const & e ) {
    EXPECT_STREQ( e.what(), "type 'Bridging::NoSuchType' is not registered" );
  }
}

TEST( Registry, theSectionKoiTypeListsExactlyTheRegisteredTypes ) {
  auto listed = typeNamesOf( LUMO_LIBRARY );
  EXPECT_EQ( listed.count( "Koi::U8" ), 1u ) << LUMO_LIBRARY;
  listed.merge( typeNamesOf( "/proc/self/exe" ) );
  std::multiset< std::string > registered;
  for( KoiType const * type : Koi::typeNodes() )
    registered.insert( type->name );
  EXPECT_EQ( listed, registered );
}

TEST( Registry, aNodeMayComeTwiceButANameMayNot ) {
  Koi::typeNodeIs( &Shapes::Tag::_koiType );
  static KoiType const other = Shapes::Tag::_koiType;
  EXPECT_DEATH( Koi::typeNodeIs( &other ), "assertion failed: sameNode" );
}

}  // namespace
