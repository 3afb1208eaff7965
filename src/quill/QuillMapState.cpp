#include <quill/QuillMapState.h>

#include <mem/Rova.h>

namespace Quill {

void QuillMapState::beginInit( QuillType type, bool synchronous, U32 size,
                               QuillParameters parameters, bool isInitialized ) {
  auto const refuse = [&]( std::string const & why ) {
    trace_.trace( 0, why );
    throw Rova::InvalidInitializeException( why );
  };
  if( size == 0 )
    refuse( "QuillMap::init() 0 is not a valid initialization size" );
  if( static_cast< U32 >( type ) > static_cast< U32 >( QuillType::keyshadow ) )
    refuse( "QuillMap::init() not a valid reader type:" +
            std::to_string( static_cast< U32 >( type ) ) );
  if( synchronous && parameters.onReadyFn )
    refuse( "QuillMap::init() onReadyFn specified in synchronous mode" );
  if( isInitialized )
    refuse( "QuillMap::init() name:" + name_ +
            " already initialized with mode:" + quillTypeName( mode_ ) + " for collection " +
            name_ + ( mode_ == QuillType::writer ? " in writer mode" : "" ) );
  trace_.trace( 2, "QuillMap::init() name:", name_, " mode:", quillTypeName( type ),
                " maxSize:", size, " fixedCapacity:", parameters.fixedCapacity,
                " shrinkSlots:", parameters.shrinkSlots, " pruneConquer:", parameters.pruneConquer,
                " asynchronous:", !synchronous,
                " onReadyFn:", static_cast< bool >( parameters.onReadyFn ),
                " notifyFlush:", parameters.notifyFlush, " readers:", parameters.readers );
  parameters_ = std::move( parameters );
  if( !parameters_.activity )
    parameters_.activity = Koi::defaultActivity();
  size_ = size;
  mode_ = type;
  isSynchronous_ = isAdvertised_ = synchronous;
}

U32 QuillMapState::kindleId() const {
  try {
    return Mem::TableDir( parameters_.root, name_, Mem::MappedFile::readOnly ).kindle();
  } catch( Rova::MemoryResourceException const & ) {
    return 0;
  }
}

bool QuillMapState::beginsNotifying( bool enable ) {
  bool const begins = enable && !isNotifying_;
  isNotifying_ = enable;
  wasNotifying_ = wasNotifying_ || enable;
  return begins;
}

void QuillMapState::advertiseCollectionReady() {
  char const * const why = isSynchronous_                   ? "in synchronous mode"
                           : isAdvertised_                  ? "collection already advertised"
                           : wasNotifying_ && !isNotifying_ ? "notifications unexpectedly disabled"
                                                            : nullptr;
  if( why )
    throw Rova::InvalidInitializeException( std::string( "QuillMap::advertiseCollectionReady() " ) +
                                            why );
  collectionReadyIs( true );
}

void QuillMapState::collectionReadyIs( bool ready ) {
  bool const becomes = ready && !isAdvertised_;
  isAdvertised_ = ready;
  if( becomes && onCollection_ )
    onCollection_();
}

}  // namespace Quill
