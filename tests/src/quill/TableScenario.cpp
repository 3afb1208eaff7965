#include "TableScenario.h"

namespace Tests {
namespace {

/// A key whose hash is chosen: keys of one hash collide for good.
ProbeKey key( U32 hash, U32 number = 0 ) { return { { hash, number } }; }

void fill( ProbeTable & table, U32 count ) {
  for( U32 i = 0; i < count; ++i )
    table.write( key( i * 0x9e3779b1 ), 1 );
}
/// Colliding keys on the way in, some of the same hash.
void collide( ProbeTable & table ) {
  for( U32 i = 0; i < 3; ++i )
    table.write( key( 1, i ), 1 );
  table.write( key( 1 | 16 ), 1 );
  table.write( key( 1 | 0x80000000 ), 1 );
}
/// Many notifications of few slots, so that the queue has room for `left` more.
void exhaustQueue( ProbeTable & table, U32 left = 0, ProbeKey const & by = key( 2 ) ) {
  table.write( by, 1 + table.content[by] );
  auto const & queue = table.writer->queue();
  while( queue.currentPos() + left < queue.capacity() )
    table.write( by, 1 + table.content[by] );
}
void openDirect( ProbeTable & table, ProbeKey const & k, U32 version, bool commits ) {
  U32 * const words = table.writer->directWrite( k );
  auto const value = probe< ProbeWriter::Value >( k, version );
  for( U32 i = 2; i < 8; ++i )
    RecordedMemory::store( words + i, value.word[i] );
  if( commits ) {
    table.writer->directCommit();
    table.holds( k, version );
  }
}

std::vector< Scenario > made() {
  std::vector< Scenario > all;
  auto const add = [&]( std::string name, ProbeTable::Shape shape, auto prepare, auto act ) {
    all.push_back( { std::move( name ), shape, prepare, act } );
  };
  auto const nothing = []( ProbeTable & ) {};
  // 1. Single operations, in tables of several sizes.
  for( U32 const size : { 1u, 4u, 9u, 16u } ) {
    std::string const of = " of " + std::to_string( size );
    ProbeTable::Shape const shape{ size, 1, 1024, true };
    U32 const most = size == 1 ? 0 : size / 2;
    add(
        "insert" + of, shape, [=]( auto & t ) { fill( t, most ); },
        []( auto & t ) { t.write( key( 7 ), 5 ); } );
    add(
        "overwrite" + of, shape, [=]( auto & t ) { fill( t, most + 1 ); },
        []( auto & t ) { t.write( key( 0 ), 5 ); } );
    add(
        "remove" + of, { size, size, 1024, true }, [=]( auto & t ) { fill( t, most + 1 ); },
        []( auto & t ) { t.remove( key( 0 ) ); } );
    add(
        "reuse" + of, { size, size, 1024, true }, [=]( auto & t ) { fill( t, most + 1 ); },
        []( auto & t ) {
          t.remove( key( 0 ) );
          t.write( key( 7 ), 6 );
        } );
    add(
        "insert where another was" + of, { size, size, 1024, true },
        [=]( auto & t ) { fill( t, most + 1 ), t.remove( key( 0 ) ); },
        []( auto & t ) { t.write( key( 7 ), 6 ); } );
    add(
        "grow" + of, shape, [=]( auto & t ) { fill( t, size ); },
        []( auto & t ) { t.write( key( 7 ), 5 ); } );
    // Two turns of the queue, with a reader behind: once.
    if( size == 1 )
      add(
          "compaction there and back", { 8, 8, 1024, false, 4096, true },
          []( auto & t ) { fill( t, 6 ), exhaustQueue( t ); },
          []( auto & t ) {
            for( U32 i = 0; i < 3; ++i ) {
              t.write( key( i * 0x9e3779b1 ), 5 );
              exhaustQueue( t );
            }
            t.write( key( 2 ), 7777 );
          } );
  }
  // 2. Collisions.
  ProbeTable::Shape const nine{ 9, 9, 1024, true };
  add( "insert among collisions", nine, collide, []( auto & t ) { t.write( key( 1, 7 ), 5 ); } );
  add( "insert at the front of a chain", nine, collide,
       []( auto & t ) { t.write( key( 1, 0 ), 9 ), t.write( key( 17, 9 ), 5 ); } );
  add( "overwrite in the middle", nine, collide, []( auto & t ) { t.write( key( 1, 1 ), 5 ); } );
  add( "remove from the middle", nine, collide, []( auto & t ) { t.remove( key( 1, 1 ) ); } );
  add( "remove the head", nine, collide, []( auto & t ) { t.remove( key( 1, 0 ) ); } );
  add( "remove and come again elsewhere", nine, collide, []( auto & t ) {
    t.remove( key( 1, 0 ) );
    t.write( key( 2, 0 ), 2 );
    t.remove( key( 1, 1 ) );
    t.write( key( 1, 0 ), 3 );
  } );
  add( "overwrite twice", nine, collide, []( auto & t ) {
    t.write( key( 1, 1 ), 5 );
    t.write( key( 1, 2 ), 6 );
    t.write( key( 1, 1 ), 7 );
  } );
  add( "overwrite and remove and fill again", nine, collide, []( auto & t ) {
    t.write( key( 1, 1 ), 5 );
    t.remove( key( 1, 1 ) );
    t.write( key( 3, 3 ), 6 );
  } );
  // 3. Direct writes.
  add( "direct write of what is there", nine, collide,
       []( auto & t ) { openDirect( t, key( 1, 1 ), 5, true ); } );
  add( "direct write of a new key", nine, collide,
       []( auto & t ) { openDirect( t, key( 5, 1 ), 5, true ); } );
  add( "direct write that stays open", nine, collide,
       []( auto & t ) { openDirect( t, key( 1, 1 ), 5, false ); } );
  // 4. Buckets split and merge.
  add(
      "split with collisions", { 4, 1, 1024, true },
      []( auto & t ) {
        for( U32 i = 0; i < 4; ++i )
          t.write( key( 1 + 4 * i ), 1 );
      },
      []( auto & t ) { t.write( key( 6 ), 5 ); } );
  add(
      "join", { 16, 16, 1024, false }, []( auto & t ) { fill( t, 4 ); },
      []( auto & t ) { t.remove( key( 0 ) ); } );
  // 5. Slots move.
  auto const sparse = []( ProbeTable & t ) {
    fill( t, 32 );
    for( U32 i = 0; i < 24; ++i )
      t.remove( key( i * 0x9e3779b1 ) );
  };
  add(
      "shrink", { 8, 2, 1024, true }, [=]( auto & t ) { fill( t, 16 ), t.remove( key( 0 ) ); },
      []( auto & t ) {
        for( U32 i = 1; i < 13; ++i )
          t.remove( key( i * 0x9e3779b1 ) );
      } );
  add( "shrink and grow again", { 8, 2, 1024, true }, sparse, []( auto & t ) {
    for( U32 i = 24; i < 30; ++i )
      t.remove( key( i * 0x9e3779b1 ) );
    for( U32 i = 0; i < 12; ++i )
      t.write( key( 100 + i * 3 ), 2 );
  } );
  add(
      "last entry goes", { 16, 1, 1024, true }, []( auto & t ) { fill( t, 1 ); },
      []( auto & t ) { t.remove( key( 0 ) ); } );
  // The queue is full, or nearly, when a slice of moves begins, or one between two.
  for( U32 left = 1; left <= 5; ++left )
    add(
        "shrink in slices with room for " + std::to_string( left ), { 16, 2, 1024, true, 1 },
        [=]( auto & t ) {
          fill( t, 16 );
          for( U32 i = 0; i < 12; ++i )
            t.remove( key( i * 0x9e3779b1 ) );
          exhaustQueue( t, left, key( 14 * 0x9e3779b1 ) );
        },
        []( auto & t ) {
          t.remove( key( 12 * 0x9e3779b1 ) );
          t.write( key( 14 * 0x9e3779b1 ), 200 );
          openDirect( t, key( 7 ), 5, true );
          t.remove( key( 15 * 0x9e3779b1 ) );
        } );
  // 6. The queue.
  add(
      "compaction", { 4, 1, 1024, true }, []( auto & t ) { exhaustQueue( t ); },
      []( auto & t ) { t.write( key( 3 ), 5 ); } );
  add(
      "compaction back", { 4, 1, 1024, true },
      []( auto & t ) {
        exhaustQueue( t );
        t.write( key( 3 ), 5 );
        exhaustQueue( t );
      },
      []( auto & t ) { t.remove( key( 3 ) ); } );
  add( "a new table", { 4, 1, 1024, true }, nothing, []( auto & t ) { t.write( key( 3 ), 5 ); } );
  return all;
}

}  // namespace

std::vector< Scenario > const & scenarios() {
  static std::vector< Scenario > const all = made();
  return all;
}

void ProbeTable::countersNearWrap() {
  auto const & view = writer->slots().view();
  using View = Quill::Slots< ProbeRecord, RecordedMemory >;
  auto const counterIs = []( U64 * pair, U32 counter ) {
    RecordedMemory::store(
        pair, Mem::packed( { counter, Mem::unpacked( RecordedMemory::load( pair ) ).ref } ) );
  };
  for( U32 slot = 0; slot < writer->slots().numSlots(); ++slot ) {
    counterIs( View::link( view.at( slot ) ), 0xfffffffc );
    RecordedMemory::store( View::sequence( view.at( slot ) ), 0xfffffffe );
  }
  counterIs( View::link( view.lookaside() ), 0xfffffff8 );
  counterIs( view.numSlots(), 0xffffffff );
  for( U32 b = 0; b < writer->buckets().numBuckets(); ++b )
    counterIs( writer->buckets().view().at( b ), 0xfffffffc );
  counterIs( writer->buckets().view().numBuckets(), 0xffffffff );
}

Story::Story( Scenario const & scenario, bool nearWrap ) : shape( scenario.shape ) {
  auto const lacking = std::exchange( RecordedMemory::lacking, Quill::SeededFault::none );
  ProbeTable table( scenario.shape );
  scenario.prepare( table );
  if( nearWrap )
    table.countersNearWrap();
  RecordedMemory::lacking = lacking;
  Content const contentBefore = table.content;
  table.statesBegin();
  sequenceBefore = table.writer->queue().sequence();
  before = std::make_unique< Disk >( table.disk );
  table.disk.record = &events;
  scenario.act( table );
  contentAfter = table.content;
  states = table.states;
  for( auto & [key, versions] : states )
    if( !contentBefore.contains( key ) )
      versions.insert( std::nullopt );
  hasMoves = scenario.shape.shrinks && scenario.shape.minSlots < scenario.shape.numSlots;
  staysOpen = table.writer->directSlot() != Quill::noIndex;
  isFaulted = table.disk.isFaulted;
}

}  // namespace Tests
