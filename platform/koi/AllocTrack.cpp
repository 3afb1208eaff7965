#include <koi/AllocTrack.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string_view>

#include <cxxabi.h>

namespace Koi {
namespace {

// By the mangled name, of which we keep a copy: type information may be unloaded, and several
// libraries may each have their own of one type.
struct Registry {
  std::mutex lock;
  std::map< std::string, AllocTrack, std::less<> > tracks;
};

Registry & registry() {
  static Registry * const theOne = new Registry;  // never destroyed
  return *theOne;
}

std::string demangled( char const * name ) {
  std::unique_ptr< char, void ( * )( void * ) > const text(
      abi::__cxa_demangle( name, nullptr, nullptr, nullptr ), std::free );
  return text ? text.get() : name;
}

constexpr std::align_val_t cacheLine{ 64 };

/// A chunk of members of 64 bytes each: so every member is in one cache line.
bool isAligned( std::size_t size ) { return size >= 1024; }

}  // namespace

AllocTrack & AllocTrackTypeInfo::track( std::type_info const & type ) {
  Registry & all = registry();
  std::lock_guard const locked( all.lock );
  auto at = all.tracks.find( std::string_view( type.name() ) );
  if( at == all.tracks.end() )
    at = all.tracks.try_emplace( type.name(), demangled( type.name() ) ).first;
  return at->second;
}

std::vector< AllocTrackRow > allocTracks() {
  std::vector< AllocTrackRow > rows;
  {
    Registry & all = registry();
    std::lock_guard const locked( all.lock );
    for( auto const & [mangled, track] : all.tracks )
      rows.push_back(
          { track.typeName(), track.numLive(), track.liveSize(), track.numAllocated() } );
  }
  std::sort( rows.begin(), rows.end(),
             []( auto const & a, auto const & b ) { return a.typeName < b.typeName; } );
  return rows;
}

void * PtrInterface::koiMemAlloc( std::size_t size, AllocTrack & track ) {
  void * const memory =
      isAligned( size ) ? ::operator new( size, cacheLine ) : ::operator new( size );
  track.allocated( size );
  return memory;
}

void PtrInterface::koiMemFree( void * memory, std::size_t size, AllocTrack & track ) noexcept {
  if( !memory )
    return;
  track.freed( size );
  if( isAligned( size ) )
    ::operator delete( memory, cacheLine );
  else
    ::operator delete( memory );
}

}  // namespace Koi
