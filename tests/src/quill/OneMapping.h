// OneMapping.h: a memory for the table engine whose files are mapped once for all, at addresses
// that never move: the race detector, which follows addresses, sees who touches a word of them.
// The files are there before the first reader's thread begins.
#pragma once

#include <map>
#include <string>

#include <sys/mman.h>

#include <koi/Assert.h>
#include <mem/Plain.h>

namespace Tests {

struct OneMapping : Mem::Plain {
  /// A file's bytes, more than it will ever have.
  struct Room {
    static constexpr std::size_t most = 64 << 20;

    Room()
        : base( static_cast< unsigned char * >( mmap( nullptr, most, PROT_READ | PROT_WRITE,
                                                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE,
                                                      -1, 0 ) ) ) {}
    ~Room() { munmap( base, most ); }
    Room( Room const & ) = delete;
    Room & operator=( Room const & ) = delete;

    unsigned char * const base;
    alignas( 8 ) Mem::U64 size = 0;
  };

  class File {
   public:
    using Access = Mem::MappedFile::Access;
    static constexpr Access readOnly = Mem::MappedFile::readOnly;
    static constexpr Access writable = Mem::MappedFile::writable;

    explicit File( Room & room ) : room_( room ) { remap(); }
    unsigned char * base() const { return room_.base; }
    Mem::U64 size() const { return size_; }
    void reserve( Mem::U64 size ) {
      KOI_ASSERT( size <= Room::most );
      if( size > load( &room_.size ) )
        store( &room_.size, size );
      size_ = std::max( size_, size );
    }
    /// Its bytes stay: a file that is longer than it need be is right, too.
    void cut( Mem::U64 size ) { size_ = std::min( size_, size ); }
    void remap() { size_ = load( &room_.size ); }
    bool isLost() const { return false; }

   private:
    Room & room_;
    Mem::U64 size_ = 0;
  };

  class Dir {
   public:
    std::unique_ptr< File > open( std::string const & name, File::Access ) {
      auto const at = rooms_.find( name );
      return at == rooms_.end() ? nullptr : std::make_unique< File >( at->second );
    }
    std::unique_ptr< File > create( std::string const & name ) {
      return std::make_unique< File >( rooms_[name] );
    }
    void put( std::string const & ) {}
    void remove( std::string const & ) {}
    Mem::U32 kindle() const { return 1; }

   private:
    std::map< std::string, Room > rooms_;
  };
};

}  // namespace Tests
