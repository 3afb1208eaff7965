// RecordedMemory.h: a memory for the table engine that writes down every store and every call, so
// that a test can stop a writer after any of them, let a reader meet any state between two loads,
// fail a call, or leave a step of the engine out. One thread.
#pragma once

#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <koi/Assert.h>
#include <mem/MappedFile.h>
#include <mem/Rova.h>
#include <quill/SeededFault.h>

namespace Tests {

using Koi::U32;
using Koi::U64;

/// One thing that a writer did to its files.
struct MemoryEvent {
  enum Kind { store4, store8, resize, put, remove };
  Kind kind = store4;
  U32 inode = 0;
  U32 at = 0;
  U64 value = 0;
  std::string name;
};

/// All files of one table: small ones, in one block. A copy is what a crash leaves.
class Disk {
 public:
  static constexpr U32 inodeSize = 8 * 1024, mostInodes = 12;

  Disk() : memory_( new Memory ) {}
  Disk( Disk const & other )
      : memory_( new Memory( *other.memory_ ) ),
        sizes_( other.sizes_ ),
        numInodes_( other.numInodes_ ),
        names_( other.names_ ) {}
  Disk & operator=( Disk const & ) = delete;

  unsigned char * base( U32 inode ) { return memory_->bytes + std::size_t{ inode } * inodeSize; }
  U32 size( U32 inode ) const { return sizes_[inode]; }
  int find( std::string const & name ) const {
    auto const at = names_.find( name );
    return at == names_.end() ? -1 : static_cast< int >( at->second );
  }
  U32 create() {
    KOI_ASSERT( numInodes_ < mostInodes );
    return numInodes_++;
  }

  // ---- what the engine does
  template< class Word >
  void stored( Word * at, Word v ) {
    auto const [inode, offset] = placeOf( at );
    if( offset + sizeof v > sizes_[inode] ) {
      isFaulted = true;  // a writer would have died of it
      return;
    }
    does( { sizeof v == 4 ? MemoryEvent::store4 : MemoryEvent::store8, inode, offset, v, {} } );
  }
  template< class Word >
  Word loaded( Word const * at ) {
    if( replay )
      goOn();
    ++numLoads;
    auto const [inode, offset] = placeOf( at );
    if( offset + sizeof( Word ) > sizes_[inode] ) {
      lost[inode] = true;
      return 0;
    }
    Word v;
    std::memcpy( &v, at, sizeof v );
    return v;
  }
  void resized( U32 inode, U64 size ) {
    KOI_ASSERT( size <= inodeSize );
    does( { MemoryEvent::resize, inode, 0, size, {} } );
  }
  void named( std::string const & name, U32 inode ) {
    does( { MemoryEvent::put, inode, 0, 0, name } );
  }
  void unnamed( std::string const & name ) { does( { MemoryEvent::remove, 0, 0, 0, name } ); }
  void reserves() {
    if( numReserves++ == failingReserve )
      throw Rova::MemoryResourceException( "cannot reserve" );
  }

  void apply( MemoryEvent const & e ) {
    switch( e.kind ) {
      case MemoryEvent::store4: {
        U32 const v = static_cast< U32 >( e.value );
        std::memcpy( base( e.inode ) + e.at, &v, 4 );
        break;
      }
      case MemoryEvent::store8:
        std::memcpy( base( e.inode ) + e.at, &e.value, 8 );
        break;
      case MemoryEvent::resize: {
        U32 const size = static_cast< U32 >( e.value );
        if( size < sizes_[e.inode] )
          std::memset( base( e.inode ) + size, 0, sizes_[e.inode] - size );
        sizes_[e.inode] = size;
        break;
      }
      case MemoryEvent::put:
        names_[e.name] = e.inode;
        break;
      case MemoryEvent::remove:
        names_.erase( e.name );
        break;
    }
  }

  // ---- recording
  std::vector< MemoryEvent > * record = nullptr;

  // ---- a reader beside a writer: replay is what the writer does, in order
  struct Switch {
    U64 atLoad;      ///< before this load of the reader ...
    std::size_t to;  ///< ... the writer has got so far
  };
  std::vector< MemoryEvent > const * replay = nullptr;
  std::vector< Switch > switches;
  U64 numLoads = 0;

  /// Begins a run: the writer has got to `start`.
  void begins( std::size_t start, std::vector< Switch > const & some = {} ) {
    rewindTo( 0 );
    switches = some;
    nextSwitch_ = 0;
    numLoads = 0;
    lost.fill( false );
    advanceTo( start );
  }
  std::size_t applied() const { return applied_; }
  void finishes() { advanceTo( replay->size() ); }
  void rewindTo( std::size_t count ) {
    while( applied_ > count ) {
      auto const & undo = undo_.back();
      if( undo.at == aCall ) {
        auto const & call = undoCalls_.back();
        if( !call.cut.empty() )
          std::memcpy( base( call.inode ) + sizes_[call.inode], call.cut.data(), call.cut.size() );
        sizes_ = call.sizes;
        names_ = call.names;
        undoCalls_.pop_back();
      } else {
        std::memcpy( memory_->bytes + undo.at, &undo.value, 8 );
      }
      undo_.pop_back();
      --applied_;
    }
  }

  bool isFaulted = false;
  std::array< bool, mostInodes > lost{};
  U32 numReserves = 0;
  U32 failingReserve = std::numeric_limits< U32 >::max();

 private:
  struct alignas( 4096 ) Memory {
    unsigned char bytes[std::size_t{ inodeSize } * mostInodes]{};
  };
  static constexpr std::size_t aCall = ~std::size_t{ 0 };
  struct Undo {
    std::size_t at = aCall;
    U64 value = 0;
  };
  struct UndoCall {
    U32 inode = 0;
    std::string cut;  // the bytes that a shorter file lost
    std::array< U32, mostInodes > sizes{};
    std::map< std::string, U32 > names;
  };

  std::pair< U32, U32 > placeOf( void const * at ) const {
    auto const offset =
        static_cast< std::size_t >( static_cast< unsigned char const * >( at ) - memory_->bytes );
    KOI_ASSERT( offset < sizeof memory_->bytes );
    return { static_cast< U32 >( offset / inodeSize ), static_cast< U32 >( offset % inodeSize ) };
  }
  void does( MemoryEvent e ) {
    apply( e );
    if( record )
      record->push_back( std::move( e ) );
  }
  void goOn() {
    while( nextSwitch_ < switches.size() && switches[nextSwitch_].atLoad <= numLoads )
      advanceTo( switches[nextSwitch_++].to );
  }
  void advanceTo( std::size_t count ) {
    for( ; applied_ < count; ++applied_ ) {
      auto const & e = ( *replay )[applied_];
      Undo undo;
      if( e.kind == MemoryEvent::store4 || e.kind == MemoryEvent::store8 ) {
        undo.at = std::size_t{ e.inode } * inodeSize + e.at;
        std::memcpy( &undo.value, memory_->bytes + undo.at, 8 );
      } else {
        auto & call = undoCalls_.emplace_back( UndoCall{ e.inode, {}, sizes_, names_ } );
        if( e.kind == MemoryEvent::resize && e.value < sizes_[e.inode] )
          call.cut.assign( reinterpret_cast< char const * >( base( e.inode ) ) + e.value,
                           sizes_[e.inode] - e.value );
      }
      undo_.push_back( undo );
      apply( e );
    }
  }

  std::unique_ptr< Memory > memory_;
  std::array< U32, mostInodes > sizes_{};
  U32 numInodes_ = 0;
  std::map< std::string, U32 > names_;
  std::size_t applied_ = 0;
  std::size_t nextSwitch_ = 0;
  std::vector< Undo > undo_;
  std::vector< UndoCall > undoCalls_;
};

/// The policy. What it does, it does to the disk that is current.
struct RecordedMemory {
  static inline Disk * disk = nullptr;
  static inline Quill::SeededFault lacking = Quill::SeededFault::none;

  static U32 load( U32 const * at ) { return disk->loaded( at ); }
  static U64 load( U64 const * at ) { return disk->loaded( at ); }
  static void store( U32 * at, U32 v ) { disk->stored( at, v ); }
  static void store( U64 * at, U64 v ) { disk->stored( at, v ); }
  static void publish( U32 * at, U32 v ) { disk->stored( at, v ); }
  static U32 observe( U32 const * at ) { return disk->loaded( at ); }
  static void prefetch( void const * ) {}
  static bool lacks( Quill::SeededFault fault ) { return fault == lacking; }

  class File {
   public:
    using Access = Mem::MappedFile::Access;
    static constexpr Access readOnly = Mem::MappedFile::readOnly;
    static constexpr Access writable = Mem::MappedFile::writable;

    File( Disk & on, U32 inode ) : disk_( on ), inode_( inode ), size_( on.size( inode ) ) {}
    unsigned char * base() const { return disk_.base( inode_ ); }
    U64 size() const { return size_; }
    void reserve( U64 size ) {
      disk_.reserves();
      if( size > disk_.size( inode_ ) )
        disk_.resized( inode_, size );
      size_ = std::max( size_, size );
    }
    void cut( U64 size ) {
      if( size < disk_.size( inode_ ) )
        disk_.resized( inode_, size );
      size_ = std::min( size_, size );
    }
    void remap() {
      size_ = disk_.size( inode_ );
      disk_.lost[inode_] = false;
    }
    bool isLost() const { return disk_.lost[inode_]; }
    U32 inode() const { return inode_; }

   private:
    Disk & disk_;
    U32 const inode_;
    U64 size_;
  };

  class Dir {
   public:
    explicit Dir( Disk & on ) : disk_( on ) {}
    std::unique_ptr< File > open( std::string const & name, File::Access ) const {
      int const inode = disk_.find( name );
      return inode < 0 ? nullptr : std::make_unique< File >( disk_, static_cast< U32 >( inode ) );
    }
    std::unique_ptr< File > create( std::string const & name ) {
      U32 const inode = made_[name] = disk_.create();
      return std::make_unique< File >( disk_, inode );
    }
    void put( std::string const & name ) { disk_.named( name, made_.at( name ) ); }
    void remove( std::string const & name ) { disk_.unnamed( name ); }
    U32 kindle() const { return 0x00c0ffee; }

   private:
    Disk & disk_;
    std::map< std::string, U32 > made_;
  };
};

}  // namespace Tests
