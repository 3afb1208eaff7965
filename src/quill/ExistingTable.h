// ExistingTable.h: how a writer takes over the table that an earlier one left. Used by the writer
// process, with the table's lock; or on a copy of the files, by whoever wants to know what the next
// writer would say of them.
//
// What an earlier writer left is repaired before it is judged: a stop after any single store leaves
// something that the repair makes whole again. The repair may be stopped anywhere, too.
#pragma once

#include <quill/ChainSurvey.h>
#include <quill/Validator.h>

namespace Quill {

/// What a writer wants of its table.
template< class R, class M >
struct WriterTerms {
  using File = typename M::File;
  using Writer = TableWriter< R, M >;
  using SlotsOf = SlotWriterTable< R, M >;
  using Queue = ConquerWriter< M >;

  SlotTable::Layout layout;  ///< its seed is that of a new table
  typename SlotsOf::Limits limits;
  bool prunes = true;
  Mem::Followers * followers = nullptr;

  /// A writer on files that are whole.
  std::unique_ptr< Writer > writer( std::unique_ptr< File > slots, std::unique_ptr< File > buckets,
                                    typename Queue::Files queues, U32 seed,
                                    Ntrace::Handler const & trace ) const {
    return std::make_unique< Writer >(
        std::make_unique< SlotsOf >( std::move( slots ), limits, trace ), std::move( buckets ),
        std::move( queues ), seed, prunes, followers, trace );
  }
};

template< class R, class M >
class ExistingTable {
 public:
  using Dir = typename M::Dir;
  using File = typename M::File;
  using Terms = WriterTerms< R, M >;
  using Writer = TableWriter< R, M >;
  using View = Slots< R, M >;
  using SlotsOf = SlotWriterTable< R, M >;
  using Queue = ConquerWriter< M >;

  ExistingTable( Dir & dir, Terms const & terms, U32 kindle, Ntrace::Handler const & trace )
      : dir_( dir ), terms_( terms ), trace_( trace ), kindle_( kindle ) {}

  /// The writer that goes on with the files, repaired; null when they cannot be believed. Raises
  /// Rova::MemoryResourceException.
  std::unique_ptr< Writer > taken();

  /// Why they cannot be believed.
  std::string const & fault() const { return fault_; }
  /// Whether an operation was under way, and the repair had something to put right.
  bool isMended() const { return isMended_; }

 private:
  template< class Header >
  static Header headerOf( File const & file ) {
    return loadedHeader< M, Header >( file.base(), file.size() );
  }
  static bool isOdd( View const & view, U32 slot ) {
    return M::load( View::sequence( view.at( slot ) ) ) & 1;
  }

  /// Makes both queues name the same one as current. A stop during the switch leaves both naming
  /// themselves, and both whole.
  bool isOneCurrent( typename Queue::Files const & queues ) {
    auto const one = headerOf< ConquerTable::Header >( *queues[0] ),
               two = headerOf< ConquerTable::Header >( *queues[1] );
    if( one.currentTable == two.currentTable )
      return true;  // O9
    if( one.currentTable == conquer2 )
      return false;
    M::store( reinterpret_cast< U32 * >( queues[0]->base() + ConquerTable::currentTableAt ),
              U32{ conquer2 } );
    isMended_ = true;
    return true;
  }

  std::string repair( Writer & writer, ChainSurvey< R, M > const & survey, U32 intent ) {
    auto & table = writer.slots();
    auto & queue = writer.queue();
    auto const & view = table.view();
    isMended_ |= intent != noIndex || !survey.uncut().empty() || queue.isMoving();
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
    if( !M::lacks( SeededFault::repairFreeList ) && !isFreeListWhole( table, survey ) ) {
      table.freeListIs( [&]( U32 slot ) { return survey.isIn( slot ); } );
      isMended_ = true;
    }
    if( table.occupiedSlots() != survey.numIn() && !M::lacks( SeededFault::repairCounts ) ) {
      table.occupiedIs( survey.numIn() );
      isMended_ = true;
    }
    // O10: whoever is linked and not notified yet is named by the intent.
    // 4. The queue: who has which notification. Who was being changed is notified again.
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
  Terms const & terms_;
  Ntrace::Handler const & trace_;
  U32 const kindle_;
  std::string fault_;
  bool isMended_ = false;
};

template< class R, class M >
std::unique_ptr< TableWriter< R, M > > ExistingTable< R, M >::taken() {
  std::string message;
  isMended_ = false;
  auto const not_ = [&]( std::string const & why ) {
    trace_.trace( 0, "QuillWriter::attach() failed validation: ", why );
    fault_ = why;
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
      !slotHeader.isOf( terms_.layout, message ) ||
      !bucketHeader.validate( trace_, buckets->size(), kindle_, message ) )
    return not_( message );
  if( slotHeader.numSlots.ref == 0 || slotHeader.numSlots.ref > slotHeader.maxSlots ||
      !isPowerOfTwo( bucketHeader.numBuckets.ref ) || bucketHeader.numBuckets.ref >= endBit )
    return not_( "bad numSlots:" + std::to_string( slotHeader.numSlots.ref ) +
                 " or numBuckets:" + std::to_string( bucketHeader.numBuckets.ref ) );
  for( U32 id : { conquer1, conquer2 } )
    if( !headerOf< ConquerTable::Header >( *queues[id] )
             .validate( trace_, queues[id]->size(), kindle_, message ) )
      return not_( id == conquer1 ? "ConquerWriter::validateFile(): conquer.1 validation failed"
                                  : "ConquerWriter::validateFile(): conquer.2 validation failed" );
  if( !isOneCurrent( queues ) )
    return not_( "no queue is current" );
  auto const queueHeader = headerOf< ConquerTable::Header >(
      *queues[headerOf< ConquerTable::Header >( *queues[0] ).currentTable] );
  if( queueHeader.currentPos > queueHeader.notifications.ref )
    return not_( "bad currentPos:" + std::to_string( queueHeader.currentPos ) );
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
  auto writer = terms_.writer( std::move( slots ), std::move( buckets ), std::move( queues ),
                               slotHeader.seed, trace_ );
  if( auto const fault = repair( *writer, survey, intent ); !fault.empty() )
    return not_( fault );
  if( auto const fault = Validator< R, M >( *writer ).fault(); !fault.empty() )
    return not_( fault );
  return writer;
}

}  // namespace Quill
