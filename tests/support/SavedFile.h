// SavedFile.h: a file for the time of a test.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TestSupport {

/// A file with these bytes, for as long as this object lives.
class SavedFile {
 public:
  explicit SavedFile( std::string_view bytes ) {
    char const * folder = std::getenv( "TMPDIR" );
    path_ = std::string( folder ? folder : P_tmpdir ) + "/lumo-test-XXXXXX";
    int const descriptor = mkstemp( path_.data() );
    if( descriptor < 0 )
      throw std::runtime_error( "no temporary file " + path_ );
    close( descriptor );
    std::ofstream( path_, std::ios::binary ) << bytes;
  }
  ~SavedFile() { unlink( path_.c_str() ); }
  SavedFile( SavedFile const & ) = delete;
  SavedFile & operator=( SavedFile const & ) = delete;

  std::string const & path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace TestSupport
