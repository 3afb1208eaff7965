// TableAttach.h: how a writer comes by its table: a new one, one that an earlier writer left, or a
// new one in place of files that cannot be believed. Used by the writer process, with the table's
// lock.
//
// What an earlier writer left is repaired before it is judged: a stop after any single store leaves
// something that the repair makes whole again. The repair may be stopped anywhere, too.
//
// New files are made under other names and put in place by renaming. The slot file is the table: it
// goes first and comes last, so that new slots never stand over old buckets. Who maps the old ones
// keeps them.
#pragma once

#include <bit>

#include <quill/ChainSurvey.h>
#include <quill/Validator.h>

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
      : dir_( dir ), wish_( std::move( wish ) ), trace_( trace ), kindle_( dir.kindle() ) {}

  /// Raises Rova::MemoryResourceException, Rova::InvalidInitializeException.
  std::unique_ptr< Writer > attach() {
    bool const wasThere = isAnythingThere();
    if( wasThere )
      if( auto writer = existing() ) {
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

  std::unique_ptr< Writer > writerOf( std::unique_ptr< File > slots,
                                      std::unique_ptr< File > buckets, typename Queue::Files queues,
                                      U32 seed ) const {
    return std::make_unique< Writer >(
        std::make_unique< SlotsOf >( std::move( slots ), wish_.limits, trace_ ),
        std::move( buckets ), std::move( queues ), seed, wish_.prunes, wish_.followers, trace_ );
  }

  // ---- new files

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
    auto writer = writerOf( std::move( slots ), std::move( buckets ), std::move( queues ),
                            wish_.layout.seed );
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

  // ---- files that are there

  /// Null when they cannot be believed; the trace says why.
  std::unique_ptr< Writer > existing() {
    std::string message;
    auto const not_ = [&]( std::string const & why ) {
      trace_.trace( 0, "QuillWriter::attach() failed validation: ", why );
      return nullptr;
    };
    auto slots = dir_.open( SlotTable::fileName, File::writable );
    auto buckets = dir_.open( BucketTable::fileName, File::writable );
    typename Queue::Files queues{ dir_.open( ConquerTable::fileName[0], File::writable ),
                                  dir_.open( ConquerTable::fileName[1], File::writable ) };
    if( !slots || !buckets || !queues[0] || !queues[1] )
      return not_( "a file is missing" );
    // 1. The headers.
    auto const slotHeader = headerOf< SlotTable::Header >( *slots );
    auto const bucketHeader = headerOf< BucketTable::Header >( *buckets );
    if( !slotHeader.validate( trace_, slots->size(), kindle_, message ) ||
        !slotHeader.isOf( wish_.layout, message ) ||
        !bucketHeader.validate( trace_, buckets->size(), kindle_, message ) )
      return not_( message );
    if( slotHeader.numSlots.ref == 0 || slotHeader.numSlots.ref > slotHeader.maxSlots ||
        !isPowerOfTwo( bucketHeader.numBuckets.ref ) || bucketHeader.numBuckets.ref >= endBit )
      return not_( "bad numSlots:" + std::to_string( slotHeader.numSlots.ref ) +
                   " or numBuckets:" + std::to_string( bucketHeader.numBuckets.ref ) );
    for( U32 id : { conquer1, conquer2 } )
      if( !headerOf< ConquerTable::Header >( *queues[id] )
               .validate( trace_, queues[id]->size(), kindle_, message ) )
        return not_( id == conquer1
                         ? "ConquerWriter::validateFile(): conquer.1 validation failed"
                         : "ConquerWriter::validateFile(): conquer.2 validation failed" );
    if( !isOneCurrent( queues ) )
      return not_( "no queue is current" );
    // 2. The chains.
    View const slotView( *slots );
    Quill::Buckets< M > const bucketView( *buckets );
    ChainSurvey< R, M > survey( slotView, bucketView, slotHeader.numSlots.ref,
                                bucketHeader.numBuckets.ref, slotHeader.seed );
    if( auto const fault = survey.walk(); !fault.empty() )
      return not_( fault );
    U32 const intent = Mem::unpacked( M::load( View::link( slotView.lookaside() ) ) ).ref;
    for( U32 slot = 0; slot < slotHeader.numSlots.ref; ++slot )
      if( survey.isIn( slot ) && slot != intent && isOdd( slotView, slot ) )
        return not_( "odd sequence, slot:" + std::to_string( slot ) );
    // 3. What the chains say, the rest is made to say.
    auto writer =
        writerOf( std::move( slots ), std::move( buckets ), std::move( queues ), slotHeader.seed );
    if( auto const fault = repair( *writer, survey, intent ); !fault.empty() )
      return not_( fault );
    if( auto const fault = Validator< R, M >( *writer ).fault(); !fault.empty() )
      return not_( fault );
    return writer;
  }

  template< class Header >
  static Header headerOf( File const & file ) {
    return loadedHeader< M, Header >( file.base(), file.size() );
  }
  static bool isOdd( View const & view, U32 slot ) {
    return M::load( View::sequence( view.at( slot ) ) ) & 1;
  }

  /// Makes both queues name the same one as current. A stop during the switch leaves both naming
  /// themselves, and both whole.
  static bool isOneCurrent( typename Queue::Files const & queues ) {
    auto const one = headerOf< ConquerTable::Header >( *queues[0] ),
               two = headerOf< ConquerTable::Header >( *queues[1] );
    if( one.currentTable == two.currentTable )
      return true;  // O9
    if( one.currentTable == conquer2 )
      return false;
    M::store( reinterpret_cast< U32 * >( queues[0]->base() + ConquerTable::currentTableAt ),
              U32{ conquer2 } );
    return true;
  }

  std::string repair( Writer & writer, ChainSurvey< R, M > const & survey, U32 intent ) const {
    auto & table = writer.slots();
    auto & queue = writer.queue();
    auto const & view = table.view();
    // 1. Splits and merges are finished.
    if( !M::lacks( SeededFault::repairCut ) )
      for( auto const & one : survey.uncut() )
        writer.buckets().cut( one.bucket, one.last,
                              one.bucket + writer.buckets().numBuckets() / 2 );
    // 2. A value that was being rewritten is as it was.
    if( intent < table.numSlots() && survey.isIn( intent ) && isOdd( view, intent ) &&
        !M::lacks( SeededFault::repairValue ) ) {
      U32 copy[numWordsOf< R >];
      loadWords< M, numWordsOf< R > >( copy, View::value( view.lookaside() ) );
      storeWords< M, numWordsOf< R > >( View::value( view.at( intent ) ), copy );
      table.endRewrite( intent );
    }
    // 3. Whoever is in no chain is free.
    if( !M::lacks( SeededFault::repairFreeList ) && !isFreeListWhole( table, survey ) )
      table.freeListIs( [&]( U32 slot ) { return survey.isIn( slot ); } );
    if( table.occupiedSlots() != survey.numIn() && !M::lacks( SeededFault::repairCounts ) )
      table.occupiedIs( survey.numIn() );
    // O10: whoever is linked and not notified yet is named by the intent.
    // 4. The queue: who has which notification. Who was being changed is notified again.
    if( queue.currentPos() > queue.capacity() )
      return "bad currentPos:" + std::to_string( queue.currentPos() );
    queue.reservePositions( table.numSlots() );
    U64 before = 0;
    for( U32 pos = 0; pos < queue.currentPos(); ++pos ) {
      auto const entry =
          queue.entry( queue.current(), pos );  // O8: all below currentPos are whole.
      if( entry.sequence <= before ||
          ( entry.slot != noIndex && entry.slot >= table.limits().maxSlots ) )
        return "bad notification at " + std::to_string( pos );
      before = entry.sequence;
      if( entry.slot != noIndex )
        queue.positionIs( entry.slot, pos,
                          entry.slot >= table.numSlots() || !survey.isIn( entry.slot ) );
    }
    if( queue.isMoving() )
      queue.markShrinkEnd();
    U32 const leaving = intent == noIndex ? noIndex : table.leaving();
    std::vector< U32 > unsaid;
    for( U32 const slot : { intent, leaving } )
      if( slot < table.numSlots() && !M::lacks( SeededFault::repairIntent ) )
        unsaid.push_back( slot );
    queue.reserve( static_cast< U32 >( unsaid.size() ) );
    for( U32 const slot : unsaid )
      queue.notify( slot, !survey.isIn( slot ) );
    table.intentIs( noIndex );
    table.leavingIs( noIndex );
    return {};
  }

  static bool isFreeListWhole( SlotsOf const & table, ChainSurvey< R, M > const & survey ) {
    U32 count = 0;
    for( U32 slot = table.freeSlots(); slot != noIndex; slot = table.view().linkOf( slot ).ref )
      if( slot >= table.numSlots() || survey.isIn( slot ) || ++count > table.numSlots() )
        return false;
    return count + survey.numIn() == table.numSlots();
  }

  Dir & dir_;
  Wish const wish_;
  Ntrace::Handler const & trace_;
  U32 const kindle_;
  Attached attached_ = Attached::toNew;
};

}  // namespace Quill
