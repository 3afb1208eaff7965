// ShmRoot.h: a root of shared memory of a test's own, which goes with it.
#pragma once

#include <filesystem>
#include <string>

#include <stdlib.h>

#include <mem/TableDir.h>

namespace Tests {

/// A root of shared memory of this test alone, gone with it.
class ShmRoot {
 public:
  ShmRoot() {
    char path[] = "/dev/shm/lumo-test-XXXXXX";
    path_ = mkdtemp( path );
  }
  ~ShmRoot() { std::filesystem::remove_all( path_ ); }
  ShmRoot( ShmRoot const & ) = delete;
  ShmRoot & operator=( ShmRoot const & ) = delete;

  std::string const & path() const { return path_; }
  Mem::RootPath root() const { return Mem::RootPath( path_ ); }

 private:
  std::string path_;
};

}  // namespace Tests
