// TableScenario.h: tables in the states that matter, and one operation on each, written down store
// by store. Records prove themselves: a value follows from its key and a version.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>

#include <quill/TableAttach.h>
#include <quill/TableReader.h>

#include "RecordedMemory.h"

namespace Tests {

/// A record whose key says its own hash.
struct ProbeRecord {
  static constexpr char valueType[] = "Tests::Probe";
  static constexpr U32 keySize = 8, valueSize = 32;
  static U32 hash( U32 const * words, U32 seed ) { return words[0] ^ seed; }
};

using ProbeKey = Quill::KeyWords< ProbeRecord >;
/// What a table holds: key and version.
using Content = std::map< ProbeKey, U32 >;
/// The versions that each key has had; nothing: it was not there.
using States = std::map< ProbeKey, std::set< std::optional< U32 > > >;

template< class Value >
Value probe( ProbeKey const & key, U32 version ) {
  Value v{};
  v.word[0] = key.word[0];
  v.word[1] = key.word[1];
  v.word[2] = version;
  for( U32 i = 3; i < 8; ++i )
    v.word[i] = ( key.word[0] * 31 + key.word[1] ) * 0x9e3779b1 + version * 0x85ebca6b + i;
  return v;
}
/// The version of a value; nothing when it does not prove itself.
template< class Value >
std::optional< U32 > versionOf( Value const & v ) {
  auto const should = probe< Value >( v.key(), v.word[2] );
  return std::equal( v.word, v.word + 8, should.word ) ? std::optional( v.word[2] ) : std::nullopt;
}

using ProbeAttach = Quill::TableAttach< ProbeRecord, RecordedMemory >;
using ProbeWriter = Quill::TableWriter< ProbeRecord, RecordedMemory >;
using ProbeReader = Quill::TableReader< ProbeRecord, RecordedMemory >;

/// A reader that is attached and far behind.
struct SlowReader : Mem::Followers {
  U64 lowestSequence( U64 ) override { return 0; }
  bool areAwaited() override { return false; }
  U32 numReaders() const override { return 1; }
  void wake() override {}
};

/// A table on a disk of its own.
class ProbeTable {
 public:
  struct Shape {
    U32 numSlots = 4, minSlots = 1, maxSlots = 1024;
    bool shrinks = true;
    U32 movesASlice = 4096;
    bool isFollowed = false;  ///< some reader has not acknowledged anything yet
  };

  explicit ProbeTable( Shape const & shape ) : shape_( shape ) {
    RecordedMemory::disk = &disk;
    attached();
  }

  /// Attaches a writer to what is on a disk.
  static std::unique_ptr< ProbeWriter > writerOn( Disk & disk, Shape const & shape,
                                                  Quill::Attached * how = nullptr ) {
    static Ntrace::Handler const quiet( -1, {} );
    static SlowReader slow;
    RecordedMemory::disk = &disk;
    RecordedMemory::Dir dir( disk );
    ProbeAttach attach(
        dir,
        { { ProbeRecord::valueType, "Tests::Table", 32, shape.maxSlots, 0 },
          { shape.minSlots, shape.maxSlots, false, shape.shrinks, shape.movesASlice },
          shape.numSlots,
          true,
          shape.isFollowed ? &slow : nullptr },
        quiet );
    auto writer = attach.attach();
    if( how )
      *how = attach.attached();
    return writer;
  }
  static std::unique_ptr< ProbeReader > readerOn( Disk & disk ) {
    RecordedMemory::disk = &disk;
    RecordedMemory::Dir dir( disk );
    using File = RecordedMemory::File;
    return std::make_unique< ProbeReader >(
        dir.open( Quill::SlotTable::fileName, File::readOnly ),
        dir.open( Quill::BucketTable::fileName, File::readOnly ) );
  }

  void attached() { writer = writerOn( disk, shape_ ); }
  void write( ProbeKey const & key, U32 version ) {
    writer->write( probe< ProbeWriter::Value >( key, version ) );
    holds( key, version );
  }
  void remove( ProbeKey const & key ) {
    writer->remove( key );
    content.erase( key );
    states[key].insert( std::nullopt );
  }
  /// The table holds that version of a key now.
  void holds( ProbeKey const & key, U32 version ) {
    content[key] = version;
    states[key].insert( version );
  }
  /// From now on `states` is what becomes of each key.
  void statesBegin() {
    states.clear();
    for( auto const & [key, version] : content )
      states[key].insert( version );
  }
  /// Every counter of the files but the queue's sequence is next to its highest.
  void countersNearWrap();
  Shape const & shape() const { return shape_; }

  Disk disk;
  std::unique_ptr< ProbeWriter > writer;
  Content content;
  States states;

 private:
  Shape const shape_;
};

/// All that a reader finds by walking; nothing when it meets a key twice or a value that does not
/// prove itself.
inline std::optional< Content > walked( ProbeReader & reader ) {
  Content content;
  ProbeReader::Value value;
  for( bool is = reader.first( value ); is; is = reader.next( value.key(), value ) ) {
    auto const version = versionOf( value );
    if( !version || !content.emplace( value.key(), *version ).second )
      return std::nullopt;
  }
  return content;
}

/// All that a reader finds by a sweep: the versions that it met of each key.
inline std::optional< States > swept( ProbeReader & reader ) {
  States content;
  bool isWhole = true;
  reader.sweep( [&]( ProbeReader::Value const & value ) {
    auto const version = versionOf( value );
    isWhole = isWhole && version;
    content[value.key()].insert( version );
  } );
  return isWhole ? std::optional( content ) : std::nullopt;
}

/// One operation in one state.
struct Scenario {
  std::string name;
  ProbeTable::Shape shape;
  std::function< void( ProbeTable & ) > prepare;
  std::function< void( ProbeTable & ) > act;
};

/// All of them.
std::vector< Scenario > const & scenarios();

/// What became of a scenario: the table before, every store of the operation, and what it held.
struct Story {
  /// With `nearWrap` all counters are a step or two before they begin anew.
  explicit Story( Scenario const & scenario, bool nearWrap = false );

  ProbeTable::Shape shape;
  std::unique_ptr< Disk > before;
  std::vector< MemoryEvent > events;
  Content contentAfter;
  States states;  ///< of every key that is there at any time
  U64 sequenceBefore = 0;
  bool hasMoves = false;   ///< entries moved to other slots, at any time
  bool staysOpen = false;  ///< it ends in the middle of a direct write
  bool isFaulted = false;
};

}  // namespace Tests
