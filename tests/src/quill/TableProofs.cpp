#include "TableProofs.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <sstream>

namespace Tests {
namespace {

template< class... Part >
std::string text( Part const &... part ) {
  std::ostringstream out;
  ( out << ... << part );
  return out.str();
}

// ---- crashes

/// Whether somebody who had followed the queue up to the operation would miss a difference.
std::string untoldFault( Story const & story, Disk & disk, ProbeWriter & writer,
                         Content const & content ) {
  std::set< U32 > told;
  auto const & queue = writer.queue();
  for( U32 pos = 0; pos < queue.currentPos(); ++pos )
    if( auto const entry = queue.entry( queue.current(), pos );
        entry.sequence > story.sequenceBefore )
      told.insert( entry.slot );
  Disk before( *story.before );
  auto const old = ProbeTable::readerOn( before );
  RecordedMemory::disk = &disk;
  for( auto const & [key, version] : content ) {
    auto const found = writer.buckets().find( key, writer.buckets().hash( key ) );
    U32 const slot = found.slot;
    RecordedMemory::disk = &before;
    ProbeReader::Value value;
    bool const same = old->lookup( key, value ) && versionOf( value ) == version &&
                      ( slot < old->slots().numMapped() && old->slots().keyOf( slot ) == key );
    RecordedMemory::disk = &disk;
    if( !same && !told.contains( slot ) )
      return text( "nobody was told of slot ", slot );
  }
  RecordedMemory::disk = &before;
  for( U32 slot = 0; slot < old->slots().numMapped(); ++slot ) {
    auto const key = old->slots().keyOf( slot );
    bool const was = RecordedMemory::load( Quill::Slots< ProbeRecord, RecordedMemory >::flags(
                         old->slots().at( slot ) ) ) != 0;
    RecordedMemory::disk = &disk;
    bool const isThere = content.contains( key ) &&
                         writer.buckets().find( key, writer.buckets().hash( key ) ).slot == slot;
    RecordedMemory::disk = &before;
    if( was && !isThere && !told.contains( slot ) )
      return text( "nobody was told that slot ", slot, " is empty" );
  }
  RecordedMemory::disk = &disk;
  return {};
}

/// What a table must be like that a writer attached to after a stop.
std::string faultAfterAttach( Story const & story, Disk & disk, ProbeWriter & writer,
                              Quill::Attached how ) {
  if( how != Quill::Attached::toExisting )
    return "the table was formatted anew";
  if( disk.isFaulted )
    return "the writer stored where no room was reserved";
  // 1. What is there is what was, before or after.
  auto const reader = ProbeTable::readerOn( disk );
  auto const content = walked( *reader );
  if( !content )
    return "a walk met a torn value or a key twice";
  for( auto const & [key, versions] : story.states ) {
    auto const at = content->find( key );
    auto const now = at == content->end() ? std::nullopt : std::optional( at->second );
    if( !versions.contains( now ) )
      return text( "key ", key.word[0], " is ", now ? text( "at version ", *now ) : "gone" );
  }
  if( content->size() > story.states.size() )
    return "a key came from nowhere";
  // 2. Who follows the queue was told of each difference, or is to begin anew.
  if( writer.queue().minSeq() <= story.sequenceBefore )
    if( auto fault = untoldFault( story, disk, writer, *content ); !fault.empty() )
      return fault;
  // 3. It works.
  ProbeKey const probeKey{ { 0x12345678, 77 } };
  writer.write( probe< ProbeWriter::Value >( probeKey, 3 ) );
  if( !writer.remove( probeKey ) )
    return "a key that was written is not there";
  return Quill::Validator< ProbeRecord, RecordedMemory >( writer ).fault();
}

std::string attachFault( Story const & story, Disk & disk, std::vector< MemoryEvent > * events ) {
  disk.record = events;
  Quill::Attached how{};
  auto const writer = ProbeTable::writerOn( disk, story.shape, &how );
  disk.record = nullptr;
  return faultAfterAttach( story, disk, *writer, how );
}

// ---- schedules

/// What a reader does in one run, with all it learns.
std::string readFault( Story const & story, ProbeReader & reader, int what, ProbeKey const & key,
                       States::mapped_type const & versions ) {
  auto const judge = [&]( bool found, ProbeReader::Value const & value ) -> std::string {
    if( !found )
      return versions.contains( std::nullopt ) ? "" : "a key that is there was not found";
    auto const version = versionOf( value );
    if( !version || value.key() != key )
      return "a torn value";
    return versions.contains( version ) ? "" : text( "version ", *version, " never was" );
  };
  ProbeReader::Value value;
  switch( what ) {
    case 0:
      return judge( reader.lookup( key, value ), value );
    case 1: {
      std::string fault;
      ProbeKey const both[] = { key, key };
      reader.lookup( std::span( both ), [&]( std::size_t, ProbeReader::Value const * v ) {
        if( fault.empty() )
          fault = judge( v, v ? *v : ProbeReader::Value{} );
      } );
      return fault;
    }
    case 3: {
      auto const content = swept( reader );
      if( !content )
        return "a sweep met a torn value";
      for( auto const & [k, some] : story.states ) {
        auto const at = content->find( k );
        if( at == content->end() ? !some.contains( std::nullopt )
                                 : !std::ranges::includes( some, at->second ) )
          return text( "a sweep met key ", k.word[0], " wrongly" );
      }
      return content->size() > story.states.size() ? "a sweep met a key from nowhere" : "";
    }
    default: {
      auto const content = walked( reader );
      if( !content )
        return "a walk met a torn value or a key twice";
      for( auto const & [k, some] : story.states ) {
        auto const at = content->find( k );
        if( !some.contains( at == content->end() ? std::nullopt : std::optional( at->second ) ) )
          return text( "a walk met key ", k.word[0], " wrongly" );
      }
      return content->size() > story.states.size() ? "a walk met a key from nowhere" : "";
    }
  }
}

bool isEachSlotToldOnce( Disk & disk ) {
  RecordedMemory::Dir const dir( disk );
  using Quill::ConquerTable;
  std::array< std::unique_ptr< RecordedMemory::File >, 2 > queues;
  for( U32 id : { 0, 1 } )
    queues[id] = dir.open( ConquerTable::fileName[id], RecordedMemory::File::readOnly );
  auto const header = [&]( U32 id ) {
    return Quill::loadedHeader< RecordedMemory, ConquerTable::Header >( queues[id]->base(),
                                                                        queues[id]->size() );
  };
  U32 const id = header( 0 ).currentTable;
  std::set< U32 > told;
  for( U32 pos = 0; pos < header( id ).currentPos; ++pos ) {
    U32 const slot = RecordedMemory::load( reinterpret_cast< U32 const * >(
        queues[id]->base() + ConquerTable::notificationAt( pos ) + 8 ) );
    if( slot != Quill::noIndex && !told.insert( slot ).second )
      return false;
  }
  return true;
}

}  // namespace

std::string crashFault( Story const & story, Tried & tried ) {
  if( story.isFaulted )
    return "the writer stored where no room was reserved";
  std::size_t lastRepair = 0;
  for( std::size_t count = 0; count <= story.events.size(); ++count ) {
    Disk disk( *story.before );
    for( std::size_t i = 0; i < count; ++i )
      disk.apply( story.events[i] );
    Disk const crashed( disk );
    std::vector< MemoryEvent > repair;
    ++tried.crashes;
    if( auto fault = attachFault( story, disk, &repair ); !fault.empty() )
      return text( "after store ", count, ": ", fault );
    // The repair is stopped, too; the same repair need not be tried twice.
    if( repair.size() == lastRepair && count % 4 != 0 )
      continue;
    lastRepair = repair.size();
    for( std::size_t part = 1; part < repair.size(); ++part ) {
      Disk twice( crashed );
      for( std::size_t i = 0; i < part; ++i )
        twice.apply( repair[i] );
      ++tried.crashes;
      if( auto fault = attachFault( story, twice, nullptr ); !fault.empty() )
        return text( "after store ", count, " and store ", part, " of the repair: ", fault );
    }
  }
  return {};
}

std::string raceFault( Story const & story, Tried & tried ) {
  Disk disk( *story.before );
  disk.replay = &story.events;
  std::size_t const end = story.events.size();
  // Keys that are touched, one that is not, one that never was.
  std::vector< ProbeKey > keys;
  bool hasStable = false;
  for( auto const & [key, versions] : story.states )
    if( versions.size() > 1 || !std::exchange( hasStable, true ) )
      keys.push_back( key );
  keys.push_back( { { 1, 0x7777 } } );
  if( keys.size() > 6 )
    keys.erase( keys.begin() + 3, keys.end() - 3 );
  constexpr U64 most = 20000;  // loads: who is stopped or overtaken is served all the same
  static States::mapped_type const never{ std::nullopt };
  unsigned const seed = std::random_device()();
  std::mt19937 random( seed );
  // Long operations have millions of schedules: each run has other ones.
  bool const isLong = end > 60 && !std::getenv( "LUMO_EVERY_SCHEDULE" );
  std::size_t const step = isLong ? std::max< std::size_t >( 7, end / 60 ) : 1,
                    offset = random() % step;
  // The reader is one that attached at the start of the operation, or just now.
  enum Reader { early, fresh };
  auto const run = [&]( Reader which, ProbeKey const & key, int what, std::size_t start,
                        std::vector< Disk::Switch > const & switches ) {
    disk.begins( which == fresh ? start : 0 );
    auto const reader = ProbeTable::readerOn( disk );
    auto const at = story.states.find( key );
    auto const & versions = at == story.states.end() ? never : at->second;
    disk.begins( start, switches );
    ++tried.schedules;
    std::string fault;
    try {
      fault = readFault( story, *reader, what, key, versions );
    } catch( Koi::Exception const & e ) {
      fault = e.what();
    }
    if( fault.empty() && disk.numLoads > most )
      fault = text( disk.numLoads, " loads" );
    if( fault.empty() )
      return fault;
    std::string how;
    for( auto const & one : switches )
      how += text( ", at load ", one.atLoad, " to store ", one.to );
    return text( "reading ", key.word[0], "/", key.word[1], " way ", what, " from store ", start,
                 how, ": ", fault );
  };
  for( int what = 0; what < 4; ++what )
    for( auto const & key : what >= 2 ? std::vector( 1, keys.front() ) : keys ) {
      // 1. The writer stops at a store for good, or goes on at any load of the reader.
      for( std::size_t start = offset; start <= end; start += step ) {
        if( auto fault = run( fresh, key, what, start, {} ); !fault.empty() )
          return fault;
        U64 const loads = disk.numLoads;
        for( U64 load = 1; load <= loads; ++load )
          if( auto fault = run( early, key, what, start, { { load, end } } ); !fault.empty() )
            return fault;
      }
      // 2. The writer begins at any load, is stopped at any store, and goes on later or never.
      disk.begins( 0 );
      if( auto fault = run( early, key, what, 0, {} ); !fault.empty() )
        return fault;
      U64 const loads = disk.numLoads;
      for( U64 load = 1; load <= loads; ++load )
        for( std::size_t to = 1 + offset; to < end; to += step ) {
          if( auto fault = run( early, key, what, 0, { { load, to } } ); !fault.empty() )
            return fault;
          if( auto fault = run( early, key, what, 0, { { load, to }, { load + 3, end } } );
              !fault.empty() )
            return fault;
        }
    }
  // 3. Some schedules of many switches, others in each run.
  for( int i = 0; i < 500; ++i ) {
    std::vector< Disk::Switch > switches( 3 + random() % 10 );
    std::size_t to = 0;
    U64 load = 0;
    for( auto & one : switches )
      one = { load += 1 + random() % 6, to = std::min( end, to + random() % 8 ) };
    int const what = static_cast< int >( random() % 4 );
    if( auto fault = run( early, keys[random() % keys.size()], what, 0, switches ); !fault.empty() )
      return text( "seed ", seed, ": ", fault );
  }
  // 4. A slot has one notification, unless entries moved.
  disk.begins( end );
  if( !story.hasMoves && !isEachSlotToldOnce( disk ) )
    return "a slot has two notifications";
  disk.rewindTo( 0 );
  return {};
}

}  // namespace Tests
