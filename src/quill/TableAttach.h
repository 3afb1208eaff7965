// TableAttach.h: how a writer comes by its table: a new one, one that an earlier writer left, or a
// new one in place of files that cannot be believed. Used by the writer process, with the table's
// lock.
//
// New files are made under other names and put in place by renaming. The slot file is the table: it
// goes first and comes last, so that new slots never stand over old buckets. Who maps the old ones
// keeps them.
#pragma once

#include <bit>

#include <quill/ExistingTable.h>

namespace Quill {

/// How a writer came by its table.
enum class Attached { toNew, reformatted, toExisting };

template< class R, class M >
class TableAttach {
 public:
  using Dir = typename M::Dir;
  using File = typename M::File;
  using Writer = TableWriter< R, M >;
  using View = Slots< R, M >;
  using SlotsOf = SlotWriterTable< R, M >;
  using Queue = ConquerWriter< M >;

  struct Wish {
    SlotTable::Layout layout;  ///< its seed is that of a new table
    typename SlotsOf::Limits limits;
    U32 initialSlots = 8;
    bool prunes = true;
    Mem::Followers * followers = nullptr;
  };

  TableAttach( Dir & dir, Wish wish, Ntrace::Handler const & trace )
      : dir_( dir ),
        wish_( std::move( wish ) ),
        terms_{ wish_.layout, wish_.limits, wish_.prunes, wish_.followers },
        trace_( trace ),
        kindle_( dir.kindle() ) {}

  /// Raises Rova::MemoryResourceException, Rova::InvalidInitializeException.
  std::unique_ptr< Writer > attach() {
    bool const wasThere = isAnythingThere();
    if( wasThere )
      if( auto writer = ExistingTable< R, M >( dir_, terms_, kindle_, trace_ ).taken() ) {
        attached_ = Attached::toExisting;
        return writer;
      }
    attached_ = wasThere ? Attached::reformatted : Attached::toNew;
    return formatted();
  }
  Attached attached() const { return attached_; }
  U32 kindle() const { return kindle_; }

 private:
  bool isAnythingThere() const {
    return dir_.open( SlotTable::fileName, File::readOnly ) ||
           dir_.open( BucketTable::fileName, File::readOnly );
  }

  std::unique_ptr< Writer > formatted() {
    U32 const numSlots =
        wish_.limits.fixedCapacity
            ? wish_.limits.maxSlots
            : std::clamp( wish_.initialSlots, wish_.limits.minSlots, wish_.limits.maxSlots );
    SlotTable::Header const header( kindle_, wish_.layout, numSlots );
    dir_.remove( SlotTable::fileName );
    auto buckets = newBuckets( std::bit_ceil( numSlots ) );
    typename Queue::Files queues;
    for( U32 id : { conquer1, conquer2 } )
      queues[id] = newQueue( id, numSlots + numSlots / 4 + 64 );
    auto slots = dir_.create( SlotTable::fileName );
    slots->reserve( SlotTable::fileSize( View::slotSize, numSlots ) );
    storeHeader< M >( slots->base(), header );
    View const view( *slots );
    M::store( View::link( view.lookaside() ), Mem::packed( { 0, noIndex } ) );
    for( U32 slot = 0; slot < numSlots; ++slot )
      M::store( View::link( view.at( slot ) ), Mem::packed( { 0, noIndex } ) );
    auto writer = terms_.writer( std::move( slots ), std::move( buckets ), std::move( queues ),
                                 wish_.layout.seed, trace_ );
    writer->slots().addFreeSlots( 0, numSlots );
    writer->queue().reservePositions( numSlots );
    dir_.put( SlotTable::fileName );
    return writer;
  }
  std::unique_ptr< File > newBuckets( U32 count ) const {
    auto file = dir_.create( BucketTable::fileName );
    file->reserve( BucketTable::fileSize( count ) );
    storeHeader< M >( file->base(), BucketTable::Header( kindle_, count ) );
    Buckets< M > const view( *file );
    for( U32 b = 0; b < count; ++b )
      M::store( view.at( b ), Mem::packed( { 0, endMarker( nextBucket( b, count ) ) } ) );
    dir_.put( BucketTable::fileName );
    return file;
  }
  std::unique_ptr< File > newQueue( U32 id, U32 capacity ) const {
    auto file = dir_.create( ConquerTable::fileName[id] );
    file->reserve( ConquerTable::fileSize( capacity ) );
    storeHeader< M >( file->base(), ConquerTable::Header( kindle_, capacity ) );
    dir_.put( ConquerTable::fileName[id] );
    return file;
  }

  Dir & dir_;
  Wish const wish_;
  WriterTerms< R, M > const terms_;
  Ntrace::Handler const & trace_;
  U32 const kindle_;
  Attached attached_ = Attached::toNew;
};

}  // namespace Quill
