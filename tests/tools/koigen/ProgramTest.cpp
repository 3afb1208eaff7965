// ProgramTest.cpp: the command itself: what it writes, what it leaves alone, how it ends.
#include <gtest/gtest.h>
#include <koigen/Checker.h>
#include <koigen/Files.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

namespace fs = std::filesystem;
using namespace Koigen;

class Program : public testing::Test {
 protected:
  Program() {
    std::string name = testing::TempDir() + "koigenTest.XXXXXX";
    folder_ = mkdtemp( name.data() );
  }
  ~Program() override { fs::remove_all( folder_ ); }

  std::string path( std::string const & file ) const { return ( folder_ / file ).string(); }
  void put( std::string const & file, std::string const & text ) const {
    std::ofstream( path( file ) ) << text;
  }
  /// How koigen ends; what it says is in said().
  int run( std::string const & arguments ) const {
    std::string const command =
        "cd " + folder_.string() + " && " KOIGEN_PROGRAM " " + arguments + " > said 2>&1";
    int const status = std::system( command.c_str() );
    return WIFEXITED( status ) ? WEXITSTATUS( status ) : -1;
  }
  std::string said() const { return contentOf( path( "said" ) ); }

  fs::path folder_;
};

constexpr char model[] = "module A;\nnamespace N {\n/// d\nvalue V : u8;\n}\n";

TEST_F( Program, rewritesAFileOnlyWhenItsTextChanges ) {
  put( "A.koi", model );
  ASSERT_EQ( run( "--headers h --sources s A.koi" ), 0 ) << said();
  fs::file_time_type const old = fs::file_time_type::clock::now() - std::chrono::hours( 1 );
  for( auto const * file : { "h/A.h", "s/A.module.cpp" } )
    fs::last_write_time( path( file ), old );

  ASSERT_EQ( run( "--headers h --sources s A.koi" ), 0 ) << said();
  EXPECT_EQ( fs::last_write_time( path( "h/A.h" ) ), old );
  EXPECT_EQ( fs::last_write_time( path( "s/A.module.cpp" ) ), old );

  put( "A.koi", "module A;\nnamespace N {\n/// other words\nvalue V : u8;\n}\n" );
  ASSERT_EQ( run( "--headers h --sources s A.koi" ), 0 ) << said();
  EXPECT_NE( fs::last_write_time( path( "h/A.h" ) ), old );
  EXPECT_EQ( fs::last_write_time( path( "s/A.module.cpp" ) ), old );
}

TEST_F( Program, checksWithoutWriting ) {
  put( "A.koi", model );
  EXPECT_EQ( run( "--check --headers h A.koi" ), 1 );
  EXPECT_EQ( said(), "h/A.h: is missing\n" );
  EXPECT_FALSE( fs::exists( path( "h" ) ) );
  ASSERT_EQ( run( "--headers h --sources s A.koi" ), 0 );
  EXPECT_EQ( run( "--check --headers h A.koi" ), 0 );
  put( "h/A.h", "other" );
  EXPECT_EQ( run( "--check --headers h A.koi" ), 1 );
  EXPECT_EQ( said(), "h/A.h: differs from its model\n" );
}

TEST_F( Program, tellsTheErrorsOfAllFilesAndWritesNothing ) {
  put( "A.koi", "module A" );
  put( "B.koi", "module B;\nuses A;\nvalue" );
  EXPECT_EQ( run( "--headers h --sources s A.koi B.koi C.koi" ), 1 );
  EXPECT_EQ( said(),
             "A.koi:1:9: ';' was expected\n"
             "B.koi:3:1: 'namespace' or the end of the file was expected\n"
             "C.koi: cannot be read\n" );
  EXPECT_FALSE( fs::exists( path( "h" ) ) );
}

TEST_F( Program, findsWhatIsUsedInImportedFolders ) {
  fs::create_directory( path( "lib" ) );
  put( "lib/A.koi", model );
  put( "B.koi", "module B;\nuses A;\nnamespace N {\n/// d\nvalue W {\n  v : V; /// d\n}\n}\n" );
  EXPECT_EQ( run( "--headers h --sources s B.koi" ), 1 );
  EXPECT_EQ( said(), "B.koi:2:6: there is no module 'A'\n" );
  EXPECT_EQ( run( "--headers h --sources s --import lib B.koi" ), 0 ) << said();
  EXPECT_TRUE( fs::exists( path( "h/B.h" ) ) );
  EXPECT_FALSE( fs::exists( path( "h/A.h" ) ) );
}

TEST_F( Program, endsWithTwoForACallThatIsWrong ) {
  put( "A.koi", model );
  EXPECT_EQ( run( "" ), 2 );
  EXPECT_EQ( run( "--headers h A.koi" ), 2 );
  EXPECT_EQ( run( "--headers h --sources s --colour A.koi" ), 2 );
  EXPECT_EQ( run( "--help" ), 0 );
}

TEST_F( Program, saysWhichFileCannotBeWritten ) {
  put( "A.koi", model );
  fs::create_directories( path( "h/A.h" ) );
  EXPECT_EQ( run( "--headers h --sources s A.koi" ), 1 );
  EXPECT_EQ( said(), "h/A.h: cannot be written\n" );
}

// Whatever the text: a model or a ModelError.
void judge( std::string const & text ) {
  try {
    parsedText( text, "Values.koi" );
  } catch( ModelError const & e ) {
    EXPECT_NE( std::string( e.what() ), "" );
  }
}

TEST( AnyText, isJudged ) {
  std::string const uses = contentOf( KOIGEN_GOLDEN "/Uses.koi" );
  for( std::string const & good : { contentOf( KOIGEN_GOLDEN "/Values.koi" ), uses } ) {
    for( std::size_t size = 0; size < good.size(); size += 7 )
      judge( good.substr( 0, size ) );
    std::mt19937 random( 1 );
    for( int i = 0; i < 2000; ++i ) {
      std::string text = good;
      for( unsigned n = random() % 4 + 1; n > 0; --n ) {
        auto const at = random() % text.size();
        switch( random() % 3 ) {
          case 0:
            text[at] = static_cast< char >( random() );
            break;
          case 1:
            text.erase( at, random() % 20 );
            break;
          default:
            text.insert( at, good, random() % good.size(), random() % 40 );
        }
      }
      judge( text );
    }
  }
}

TEST( AnyText, mayNotNestWithoutBound ) {
  std::string calls, scopes;
  for( int i = 0; i < 100000; ++i ) {
    calls += "V( ";
    scopes += "n::";
  }
  judge( "module Values;\nnamespace N {\n/// d\nentity E {\n  attr a : V = " + calls );
  judge( "module Values;\nnamespace " + scopes + "n {\n/// d\nvalue V : u8;\n}\n" );
  judge( std::string( 1000000, '{' ) );
}

}  // namespace
