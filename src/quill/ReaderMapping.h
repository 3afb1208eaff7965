// ReaderMapping.h: a reader's hold on the slot file and the bucket file: how much of them it has
// mapped. One thread uses an object.
#pragma once

#include <memory>

#include <mem/Rova.h>
#include <ntrace/Ntrace.h>
#include <quill/Slots.h>

namespace Quill {

template< class R, class M >
class ReaderMapping {
 public:
  using File = typename M::File;
  using View = Slots< R, M >;

  /// Takes files that validate.
  ReaderMapping( std::unique_ptr< File > slots, std::unique_ptr< File > buckets )
      : slotFile_( std::move( slots ) ),
        bucketFile_( std::move( buckets ) ),
        slots_( *slotFile_ ),
        buckets_( *bucketFile_ ),
        seed_( slots_.loaded().seed ) {
    remapped();
  }

  U32 seed() const { return seed_; }
  View const & slots() const { return slots_; }
  Buckets< M > const & buckets() const { return buckets_; }

 protected:
  /// A file was cut under its mapping.
  bool isLost() const { return slotFile_->isLost() || bucketFile_->isLost(); }

  /// The files' sizes, as the counts say that they are. Raises Rova::MemoryResourceException, and
  /// Rova::CorruptionDetectedException "QuillReader::doLookup() bucket table detached".
  void remap() {
    Ntrace::standard().trace( 7, "SlotReader::doResize() requesting to map ",
                              Mem::unpacked( M::load( slots_.numSlots() ) ).ref, " slots" );
    slotFile_->remap();
    bucketFile_->remap();
    remapped();
    Ntrace::standard().trace( 7, "SlotReader::doResize() successful, slots:", numMapped_ );
  }
  void remapped() {
    numMapped_ = slots_.numMapped();
    // It may have doubled since it was mapped.
    constexpr int attempts = 100;
    for( int i = 0; i < attempts; ++i ) {
      if( numMapped_ == 0 || buckets_.numMapped() == 0 )
        break;
      count_ = M::load( buckets_.numBuckets() );
      U32 const numBuckets = Mem::unpacked( count_ ).ref;
      if( isPowerOfTwo( numBuckets ) && numBuckets <= buckets_.numMapped() ) {
        mask_ = numBuckets - 1;
        return;
      }
      bucketFile_->remap();
    }
    count_ = ~U64{ 0 };
    throw Rova::CorruptionDetectedException( "QuillReader::doLookup() bucket table detached" );
  }

  std::unique_ptr< File > slotFile_, bucketFile_;
  View slots_;
  Buckets< M > buckets_;
  U32 seed_ = 0;
  U32 numMapped_ = 0;  // slots
  U32 mask_ = 0;       // of the buckets that count_ says there are
  U64 count_ = 0;
};

}  // namespace Quill
