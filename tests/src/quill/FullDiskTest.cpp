// FullDiskTest.cpp: a table in a file system of its own that is full whenever a file is to become
// longer, and gets room page by page.
#include <fstream>
#include <map>
#include <set>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>

#include <gtest/gtest.h>

#include "ProofValue.h"

using namespace Tests;
using namespace Quill;

namespace {

/// A small file system in memory that this process alone sees.
class SmallDisk {
 public:
  SmallDisk() {
    auto const user = std::to_string( geteuid() ), group = std::to_string( getegid() );
    if( unshare( CLONE_NEWNS ) != 0 ) {
      if( unshare( CLONE_NEWUSER | CLONE_NEWNS ) != 0 )
        return;
      std::ofstream( "/proc/self/setgroups" ) << "deny";
      std::ofstream( "/proc/self/uid_map" ) << "0 " + user + " 1";
      std::ofstream( "/proc/self/gid_map" ) << "0 " + group + " 1";
    }
    isThere_ = mount( nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr ) == 0 &&
               mount( "lumo", shm_.path().c_str(), "tmpfs", 0, "size=4m" ) == 0;
    ballast_ = open( ( shm_.path() + "/ballast" ).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600 );
  }
  ~SmallDisk() {
    close( ballast_ );
    if( isThere_ )
      umount2( shm_.path().c_str(), MNT_DETACH );
  }
  SmallDisk( SmallDisk const & ) = delete;
  SmallDisk & operator=( SmallDisk const & ) = delete;

  bool isThere() const { return isThere_; }
  Mem::RootPath root() const { return shm_.root(); }
  void becomesFull() {
    struct statvfs about {};
    statvfs( shm_.path().c_str(), &about );
    auto const free = static_cast< off_t >( about.f_bfree * about.f_bsize );
    EXPECT_EQ( free == 0 ? 0 : posix_fallocate( ballast_, size_, free ), 0 );
    size_ += free;
  }
  void gets( off_t bytes ) {
    size_ -= bytes;
    EXPECT_EQ( ftruncate( ballast_, size_ ), 0 );
  }

 private:
  ShmRoot shm_;
  bool isThere_ = false;
  int ballast_ = -1;
  off_t size_ = 0;
};

TEST( FullDisk, leavesATableAsItWasUntilThereIsRoom ) {
  SmallDisk disk;
  if( !disk.isThere() )
    GTEST_SKIP() << "this user can mount no file system of its own";
  disk.becomesFull();
  std::set< std::string > refused;
  int numPutOff = 0;
  Ntrace::Handler const trace( 0, [&]( int, std::string const & line ) {
    numPutOff += line.find( "growBuckets() put off" ) != std::string::npos;
  } );
  auto parameters = proofParameters();
  parameters.initialSlots = 512;
  std::optional< ProofWriter > writer;
  std::optional< ProofReader > reader;
  std::map< U32, U64 > plain;
  auto const isAsItWas = [&] {
    if( !writer )
      return;
    ASSERT_EQ( writer->validate(), "" );
    ProofReader fresh( disk.root(), "table", trace );
    for( auto * const each : { &*reader, &fresh } ) {
      std::map< U32, U64 > walked;
      for( auto v = each->first(); v; v = each->next( { v->number } ) )
        ASSERT_TRUE( v->isSound() && walked.emplace( v->number, v->version ).second );
      ASSERT_EQ( walked, plain );
    }
  };
  // Tries until there is room for it.
  auto const does = [&]( auto act ) {
    for( ;; )
      try {
        act();
        return;
      } catch( Rova::MemoryResourceException const & e ) {
        std::string const path =
            std::string( e.what() ).substr( 0, std::string( e.what() ).rfind( ':' ) );
        refused.insert( path.substr( path.rfind( '/' ) + 1 ) );
        isAsItWas();
        disk.gets( 4096 );
      }
  };
  // 1. A new table.
  does( [&] { writer.emplace( disk.root(), "table", parameters, trace ); } );
  EXPECT_EQ( refused, ( std::set< std::string >{ "kindle", "buckets", "conquer.1", "conquer.2",
                                                 "slots" } ) );
  refused.clear();
  reader.emplace( disk.root(), "table", trace );
  disk.becomesFull();
  // 2. It grows, now by a write, now by a direct one, and its queue by any.
  auto const writes = [&]( U32 k, U64 version ) {
    does( [&] {
      if( k % 2 ) {
        writer->write( ProofValue::of( k, version ) );
      } else {
        writer->directWrite( { k } );
        writer->directValueIs( ProofValue::of( k, version ) );
        writer->directCommit();
      }
    } );
    plain[k] = version;
  };
  for( U32 k = 0; k < 4000; ++k )
    writes( k, 1 ), writes( k / 2, k );
  EXPECT_EQ( refused, ( std::set< std::string >{ "conquer.1", "conquer.2", "slots" } ) );
  EXPECT_GT( numPutOff, 0 );
  EXPECT_LT( writer->engine().buckets().numBuckets(), writer->numEntries() );
  isAsItWas();
  // 3. With room the buckets catch up.
  disk.gets( 1 << 20 );
  for( U32 k = 4000; k < 4600; ++k )
    writes( k, 1 );
  EXPECT_GE( writer->engine().buckets().numBuckets(), writer->numEntries() );
  // 4. It is found again, and shrinks, with no room but the queue's.
  disk.becomesFull();
  writer.reset();
  writer.emplace( disk.root(), "table", parameters, trace );
  EXPECT_EQ( writer->attached(), Attached::toExisting );
  for( U32 k = 0; k < 4600; ++k )
    if( k % 512 != 0 ) {
      does( [&] { writer->remove( { k } ); } );
      plain.erase( k );
    }
  isAsItWas();
  EXPECT_LT( writer->capacity(), 64u );
}

/// Long files are put into large pages, some of which there may be no room for.
TEST( FullDisk, leavesALongFileAsItWas ) {
  constexpr Mem::U64 large = 2 << 20;
  SmallDisk disk;
  if( !disk.isThere() )
    GTEST_SKIP() << "this user can mount no file system of its own";
  Mem::TableDir const dir( disk.root(), "table", Mem::MappedFile::writable );
  auto const file = dir.create( "long" );
  dir.put( "long" );
  file->reserve( large + 4096 );
  file->base()[0] = file->base()[large + 4095] = 7;
  for( Mem::U64 const size : { 4 * large, large + 8192, large + 4096 } ) {
    if( size == large + 8192 )
      disk.becomesFull();
    if( size == large + 4096 )
      EXPECT_NO_THROW( file->reserve( size ) );
    else
      EXPECT_THROW( file->reserve( size ), Rova::MemoryResourceException );
    EXPECT_EQ( file->size(), large + 4096 );
    EXPECT_EQ( dir.open( "long", Mem::MappedFile::readOnly )->size(), large + 4096 );
    EXPECT_EQ( file->base()[0] + file->base()[large + 4095], 14 );
  }
  disk.gets( 1 << 20 );
  file->reserve( large + 8192 );
  EXPECT_EQ( file->base()[large + 4095] + file->base()[large + 8191], 7 );
  auto const reader = dir.open( "long", Mem::MappedFile::readOnly );
  EXPECT_EQ( reader->size(), large + 8192 );
  EXPECT_EQ( reader->base()[large + 4095], 7 );
}

}  // namespace
