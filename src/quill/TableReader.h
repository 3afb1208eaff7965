// TableReader.h: looks entries up in a table that another process changes, over words. QuillReader
// puts values on top; tests put another memory below. It takes no lock, writes nothing to the
// files, and waits for nobody: a writer that is stopped anywhere, for ever, blocks no reader.
//
// A walk goes hand over hand: it keeps the pair (counter, link) that led it to a slot and looks at
// it again after it read the slot. If the pair moved, the look-up begins again. What looks wrong
// may be a race: it is corruption only when the same words look wrong twice in a row.
//
// Consistency: a look-up returns a value that the entry had, or "not found" that was true, at some
// moment between its call and its return. A walk visits every key that is there throughout exactly
// once; a key that comes or goes meanwhile at most once. The ledger is at the head of each writer's
// file.
#pragma once

#include <optional>
#include <span>

#include <quill/QuillException.h>
#include <quill/ReaderMapping.h>
#include <quill/SeededFault.h>

namespace Quill {

template< class R, class M >
class TableReader : private ReaderMapping< R, M > {
 public:
  using File = typename M::File;
  using Key = KeyWords< R >;
  using View = Slots< R, M >;

  static constexpr U32 numWords = numWordsOf< R >;
  using Value = ValueWords< R >;

  /// Takes files that validate.
  using ReaderMapping< R, M >::ReaderMapping;

  /// The entry of a key, whole; false when there is none. Raises Rova::CorruptionDetectedException
  /// "QuillReader::doLookup() corrupt key detected, slot:<slot>" and "QuillReader::doLookup() hash
  /// chain cycle detected, bucket:<b>"; ReaderStarvedException when 1,000,000 attempts in a row met
  /// a change; Rova::MemoryResourceException when the grown files cannot be mapped;
  /// "QuillReader::doLookup() bucket table detached" when a file was cut to nothing.
  bool lookup( Key const & key, Value & out ) {
    return sought( key, R::hash( key.word, seed_ ), exactly, out );
  }
  /// As many look-ups, faster: calls found( i, value or null ) for each, in order.
  template< class Found >
  void lookup( std::span< Key const > keys, Found found ) {
    constexpr std::size_t most = 64;
    U32 hash[most], head[most];
    Value value;
    for( std::size_t first = 0; first < keys.size(); first += most ) {
      auto const some = keys.subspan( first, std::min( most, keys.size() - first ) );
      U32 const mask = mask_;
      for( std::size_t i = 0; i < some.size(); ++i ) {
        hash[i] = R::hash( some[i].word, seed_ );
        M::prefetch( buckets_.at( hash[i] & mask ) );
      }
      for( std::size_t i = 0; i < some.size(); ++i )
        prefetchSlot( head[i] = buckets_.headOf( hash[i] & mask ).ref );
      // A third of the entries stand behind another one in their chain.
      for( std::size_t i = 0; i < some.size(); ++i )
        if( head[i] < numMapped_ && slots_.keyOf( head[i] ) != some[i] )
          prefetchSlot( slots_.linkOf( head[i] ).ref );
      for( std::size_t i = 0; i < some.size(); ++i )
        found( first + i, sought( some[i], hash[i], exactly, value ) ? &value : nullptr );
    }
  }

  /// The first entry of the table, and the one behind a key, which need not be there: false at the
  /// end. Entries come in an order of the table's own. Raises as lookup() does.
  bool first( Value & out ) { return sought( Key{}, 0, fromHere, out ); }
  bool next( Key const & key, Value & out ) {
    return sought( key, R::hash( key.word, seed_ ), behind, out );
  }

  /// The slot of the entry that the last lookup() found.
  U32 foundSlot() const { return foundSlot_; }

  /// What a slot holds, whole, for who goes by slots and not by keys; false when it is free or
  /// beyond the end. An entry may be met shortly before it is linked and after it is unlinked: its
  /// notification then comes. Raises as lookup() does.
  bool loadSlot( U32 index, Value & out ) {
    for( U32 i = 0; i < mostAttempts; ++i ) {
      U64 const numSlots = M::load( slots_.numSlots() );
      if( isLost() || ( index >= numMapped_ && index < Mem::unpacked( numSlots ).ref ) ) {
        remap();
        continue;
      }
      if( index >= Mem::unpacked( numSlots ).ref )
        return false;
      unsigned char * const slot = slots_.at( index );
      // O14: a slot that was emptied and filled meanwhile has another link.
      U64 const link = M::load( View::link( slot ) );
      bool const isThere = M::load( View::flags( slot ) ) & SlotTable::occupied;
      if( isThere && !loadValue( index, slot, out ) )
        continue;
      if( ( M::load( View::flags( slot ) ) & SlotTable::occupied ) == isThere &&
          ( M::load( View::link( slot ) ) == link || M::lacks( SeededFault::recheckSlotLink ) ) &&
          M::load( slots_.numSlots() ) == numSlots && !isLost() )
        return isThere;
      ++numRetries_;
    }
    starved();
  }

  /// Calls visit( value ) slot by slot, many times faster than a walk: for each key that is there
  /// throughout, twice when its entry moves meanwhile; for one that comes or goes perhaps. Chains
  /// are not looked at, nor what is wrong with them. Raises as lookup() does.
  template< class Visit >
  void sweep( Visit visit ) {
    Value value;
    U32 const numSlots = Mem::unpacked( M::load( slots_.numSlots() ) ).ref;
    for( U32 i = 0; i < numSlots; ++i ) {
      // Entries move to lower slots: who goes down finds each where it was or where it went.
      U32 const slot = M::lacks( SeededFault::sweepDown ) ? i : numSlots - 1 - i;
      // A writer that was stopped may have left one that is not linked.
      if( loadSlot( slot, value ) && ( !isBeingChanged( slot ) || lookup( value.key(), value ) ) )
        visit( std::as_const( value ) );
    }
  }

  using ReaderMapping< R, M >::seed;
  using ReaderMapping< R, M >::slots;
  using ReaderMapping< R, M >::buckets;
  /// How often a look-up began again since this reader began.
  U64 numRetries() const { return numRetries_; }

 private:
  using Mapping = ReaderMapping< R, M >;
  using Mapping::buckets_;
  using Mapping::count_;
  using Mapping::isLost;
  using Mapping::mask_;
  using Mapping::numMapped_;
  using Mapping::remap;
  using Mapping::seed_;
  using Mapping::slots_;

  /// What is sought: the entry of the key, the first one behind it, the first one not before it.
  enum Sought { exactly, behind, fromHere };
  enum class Outcome { found, absent, again };
  static constexpr U32 mostAttempts = 1000000;

  /// What looked wrong: to be believed when it looks the same again.
  struct Suspicion {
    U64 count = 0, led = 0, link = 0;
    U32 slot = noIndex;
    bool isCycle = false;
    friend bool operator==( Suspicion const &, Suspicion const & ) = default;
  };

  bool sought( Key const & key, U32 hash, Sought what, Value & out ) {
    Outcome const outcome = attempt( key, hash, what, out );
    if( outcome != Outcome::again ) [[likely]]
      return outcome == Outcome::found;
    return soughtAgain( key, hash, what, out );
  }
  [[gnu::noinline]] bool soughtAgain( Key const & key, U32 hash, Sought what, Value & out ) {
    Suspicion before;
    for( U32 i = 0; i < mostAttempts; ++i ) {
      ++numRetries_;
      if( suspicion_ ) {
        if( *suspicion_ == before || M::lacks( SeededFault::suspectTwice ) )
          corrupt( *suspicion_, hash );
        before = *suspicion_;
        suspicion_.reset();
      } else {
        before = {};
      }
      if( std::exchange( mustRemap_, false ) || isLost() )
        remap();
      Outcome const outcome = attempt( key, hash, what, out );
      if( outcome != Outcome::again )
        return outcome == Outcome::found;
    }
    starved();
  }
  [[noreturn]] static void starved() {
    throw ReaderStarvedException( "QuillReader::doLookup() met a change at each of " +
                                  std::to_string( mostAttempts ) + " attempts" );
  }

  Outcome attempt( Key const & key, U32 hash, Sought what, Value & out ) {
    // O5, O6, O7, O13: what the count was; it is looked at again before anything is answered.
    U64 const count = M::load( buckets_.numBuckets() );
    if( count != count_ ) [[unlikely]] {
      mustRemap_ = true;
      return Outcome::again;
    }
    U32 bucket = hash & mask_;
    U64 const * led = buckets_.at( bucket );
    U64 pair = M::load( led );
    for( U32 steps = 0;; ) {
      U32 const link = Mem::unpacked( pair ).ref;
      if( isEnd( link ) ) [[unlikely]] {
        // O4: the slot whose link ends the chain was in it after that link was read.
        if( link == noIndex )
          return suspected( { count, pair, 0, noIndex, false } );
        if( what == exactly || link == endMarker( 0 ) )
          return isStill( count ) ? Outcome::absent : Outcome::again;
        // A walk goes on at the next bucket, whose chain is behind this one.
        bucket = link & ~endBit;
        if( bucket > mask_ )
          return suspected( { count, pair, 0, link, false } );
        led = buckets_.at( bucket );
        pair = M::load( led );
        if( ++steps > numMapped_ + mask_ + 1 )
          return suspected( { count, pair, 0, link, true } );
        continue;
      }
      if( link >= numMapped_ ) [[unlikely]] {
        // O1: a slot beyond the mapping is there when the count says so, and is mapped next time.
        mustRemap_ = link < Mem::unpacked( M::load( slots_.numSlots() ) ).ref;
        return suspected( { count, pair, 0, link, false } );
      }
      unsigned char * const slot = slots_.at( link );
      U64 const next = M::load( View::link( slot ) );
      Key there;
      loadWords< M, Key::count >( there.word, View::value( slot ) );
      if( what == exactly && there == key ) {
        if( !loadValue( link, slot, out ) )
          return Outcome::again;
        // O4, O11, O12: the slot was this key's while it was read.
        if( M::load( led ) != pair && !M::lacks( SeededFault::recheckLink ) )
          return Outcome::again;
        foundSlot_ = link;
        return isStill( count ) ? Outcome::found : Outcome::again;
      }
      U32 const hashThere = R::hash( there.word, seed_ );
      if( M::load( led ) != pair && !M::lacks( SeededFault::recheckLink ) )
        return Outcome::again;  // O4, O11, O12
      // A key of the bucket that split off, or is about to merge, is met while chains are cut and
      // joined.
      U32 const modulo = M::lacks( SeededFault::splitKeys ) ? mask_ : mask_ >> 1;
      if( ( ( hashThere ^ bucket ) & modulo ) != 0 ||
          !( M::load( View::flags( slot ) ) & SlotTable::occupied ) )
        return suspected( { count, pair, next, link, false } );
      if( what == fromHere || isBehind( hashThere, there, hash, key ) ) {
        if( what == exactly )
          return isStill( count ) ? Outcome::absent : Outcome::again;
        if( !loadValue( link, slot, out ) || M::load( led ) != pair )
          return Outcome::again;
        return isStill( count ) ? Outcome::found : Outcome::again;
      }
      if( ++steps > numMapped_ + mask_ + 1 )
        return suspected( { count, pair, next, link, true } );
      led = View::link( slot );
      pair = next;
    }
  }

  /// The value of a slot, not torn; false when it changed meanwhile.
  bool loadValue( U32 index, unsigned char * slot, Value & out ) const {
    U32 const sequence = M::load( View::sequence( slot ) );  // O3
    if( sequence & 1 ) [[unlikely]] {
      // O2: while it is odd, the lookaside slot has the value as it was.
      if( !isBeingChanged( index ) )
        return false;
      loadWords< M, numWords >( out.word, View::value( slots_.lookaside() ) );
      return M::load( View::sequence( slot ) ) == sequence;
    }
    loadWords< M, numWords >( out.word, View::value( slot ) );
    return M::load( View::sequence( slot ) ) == sequence ||
           M::lacks( SeededFault::recheckSequence );  // O3
  }

  bool isBeingChanged( U32 slot ) const {
    return Mem::unpacked( M::load( View::link( slots_.lookaside() ) ) ).ref == slot;
  }
  bool isStill( U64 count ) const {
    return ( M::load( buckets_.numBuckets() ) == count || M::lacks( SeededFault::recheckCount ) ) &&
           !isLost();
  }
  Outcome suspected( Suspicion const & suspicion ) {
    suspicion_ = suspicion;
    return Outcome::again;
  }
  [[noreturn]] void corrupt( Suspicion const & suspicion, U32 hash ) {
    suspicion_.reset();
    throw Rova::CorruptionDetectedException(
        suspicion.isCycle ? "QuillReader::doLookup() hash chain cycle detected, bucket:" +
                                std::to_string( hash & mask_ )
                          : "QuillReader::doLookup() corrupt key detected, slot:" +
                                std::to_string( suspicion.slot ) );
  }

  [[gnu::always_inline]] void prefetchSlot( U32 link ) const {
    if( link < numMapped_ ) {
      M::prefetch( slots_.at( link ) );
      M::prefetch( slots_.at( link ) + View::slotSize - 1 );
    }
  }

  U32 foundSlot_ = noIndex;
  bool mustRemap_ = false;
  std::optional< Suspicion > suspicion_;
  U64 numRetries_ = 0;
};

}  // namespace Quill
