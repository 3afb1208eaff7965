#include "Files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Checker.h"

namespace Koigen {
namespace {

/// Reads what the call names and, one after another, what that uses.
class Loader {
 public:
  explicit Loader( Call const & call ) : call_( call ) {}

  Model model() {
    for( auto const & path : call_.models )
      add( path, call_.prefix, false );
    for( std::size_t i = 0; i < model_.modules.size(); ++i )
      for( auto const & u : model_.modules[i].uses )
        import( u.name );
    if( !errors_.empty() )
      throw ModelError( errors_ );
    check( model_ );
    return std::move( model_ );
  }

 private:
  void add( std::string const & path, std::string const & prefix, bool imported ) {
    bool found = false;
    std::string const text = contentOf( path, &found );
    if( !found )
      return fail( path + ": cannot be read" );
    try {
      Module module = parsedModule( text, path );
      if( module.prefix.empty() )
        module.prefix = prefix;
      module.imported = imported;
      model_.modules.push_back( std::move( module ) );
    } catch( ModelError const & e ) {  // the other files may have errors of their own to tell
      fail( e.what() );
      failed_.push_back( path );
    }
  }

  void import( std::string const & name ) {
    auto const known = [&]( Module const & m ) { return m.name == name; };
    if( std::any_of( model_.modules.begin(), model_.modules.end(), known ) )
      return;
    for( auto const & folder : call_.imports ) {
      std::string const path = folder + "/" + name + ".koi";
      if( std::find( failed_.begin(), failed_.end(), path ) != failed_.end() )
        return;
      if( std::filesystem::exists( path ) )
        return add( path, call_.importPrefix, true );
    }
  }

  void fail( std::string const & text ) { errors_ += ( errors_.empty() ? "" : "\n" ) + text; }

  Call const & call_;
  Model model_;
  std::string errors_;
  std::vector< std::string > failed_;
};

}  // namespace

Model loaded( Call const & call ) { return Loader( call ).model(); }

std::string contentOf( std::string const & path, bool * found ) {
  std::ifstream in( path, std::ios::binary );
  std::ostringstream text;
  text << in.rdbuf();
  if( found )
    *found = in.is_open() && !in.bad();
  return text.str();
}

void writeChanged( std::string const & path, std::string const & text ) {
  bool found = false;
  if( contentOf( path, &found ) == text && found )
    return;
  std::ofstream out( path, std::ios::binary | std::ios::trunc );
  out << text;
  out.close();
  if( !out )
    throw std::runtime_error( path + ": cannot be written" );
}

}  // namespace Koigen
