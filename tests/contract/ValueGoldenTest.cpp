// ValueGoldenTest.cpp: texts, log bytes, hashes and refusals stay as they were and are the same on
// every machine: values.golden is one file for all of them.
//
// LUMO_WRITE_GOLDEN=1 in the environment rewrites the file instead; look at what changed.

#include <cstdlib>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

#include <koi/Exception.h>

#include "contract/Expected.h"

using namespace Tests;

namespace {

/// One line a sample: text, log, hash; then what the type says of the first number that it refuses.
std::string linesOf( KoiType const * type ) {
  std::string lines;
  for( auto const & v : fewSamplesOf( type, 8 ) )
    lines += std::string( type->name ) + "\t" + textOf( *v ) + "\t" + hexOf( logOf( *v ) ) + "\t" +
             ( expectedHashable( type ) ? hexOf( v->hash() ) : "-" ) + "\n";
  if( type->kind == KoiType::single )
    for( auto const & primitive : samplesOf( type->fields[0].type ) )
      try {
        type->genericIfFromCtorArgs( type, { primitive }, nullptr );
      } catch( Koi::RangeException const & e ) {
        return lines + type->name + "\trefuses " + textOf( *primitive ) + "\t" + e.what() + "\n";
      }
  return lines;
}

TEST( ValueGolden, nothingThatLeavesAProcessHasChanged ) {
  std::map< std::string, std::string > now, before;
  for( KoiType const * type : valueTypes() )
    now[type->name] = linesOf( type );
  if( std::getenv( "LUMO_WRITE_GOLDEN" ) ) {
    std::ofstream file( LUMO_GOLDEN );
    for( auto const & [type, lines] : now )
      file << lines;
    GTEST_SKIP() << "written: " LUMO_GOLDEN;
  }
  std::ifstream file( LUMO_GOLDEN );
  for( std::string line; std::getline( file, line ); )
    before[line.substr( 0, line.find( '\t' ) )] += line + "\n";
  for( auto const & [type, lines] : now )
    EXPECT_EQ( lines, before[type] );
  for( auto const & [type, lines] : before )
    EXPECT_TRUE( now.count( type ) ) << type << " is gone";
}

}  // namespace
