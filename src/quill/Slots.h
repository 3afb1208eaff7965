// Slots.h: the words of a mapped slot file and of a mapped bucket file, for the writer and for
// readers. What the file says of itself is not checked here.
#pragma once

#include <quill/BucketTable.h>
#include <quill/Record.h>
#include <quill/SlotTable.h>

namespace Quill {

/// The slots of a mapped file. Addresses hold until the mapping moves.
template< class R, class M >
class Slots {
 public:
  using File = typename M::File;

  static constexpr U32 slotSize = slotSizeOf< R >;
  static constexpr U32 firstAt = SlotTable::firstSlotAt( slotSize );

  Slots() = default;
  explicit Slots( File & file ) : file_( &file ) {}

  U32 * header( U32 at ) const { return word( file_->base() + at ); }
  unsigned char * at( U32 slot ) const {
    return file_->base() + firstAt + static_cast< std::size_t >( slot ) * slotSize;
  }
  unsigned char * lookaside() const { return file_->base() + SlotTable::lookasideAt; }

  static U64 * link( unsigned char * slot ) { return reinterpret_cast< U64 * >( slot ); }
  static U32 * flags( unsigned char * slot ) { return word( slot + SlotTable::flagsAt ); }
  static U32 * sequence( unsigned char * slot ) { return word( slot + SlotTable::sequenceAt ); }
  static U32 * value( unsigned char * slot ) { return word( slot + SlotTable::valueAt ); }

  Mem::VersionedRef linkOf( U32 slot ) const {
    return Mem::unpacked( M::load( link( at( slot ) ) ) );
  }
  KeyWords< R > keyOf( U32 slot ) const {
    KeyWords< R > key;
    loadWords< M, KeyWords< R >::count >( key.word, value( at( slot ) ) );
    return key;
  }
  U64 * numSlots() const {
    return reinterpret_cast< U64 * >( file_->base() + SlotTable::numSlotsAt );
  }
  /// The header as it is now.
  SlotTable::Header loaded() const {
    return loadedHeader< M, SlotTable::Header >( file_->base(), file_->size() );
  }
  /// As many as the mapping covers.
  U32 numMapped() const {
    return file_->size() < firstAt ? 0
                                   : static_cast< U32 >( ( file_->size() - firstAt ) / slotSize );
  }
  File & file() const { return *file_; }

 private:
  static U32 * word( unsigned char * at ) { return reinterpret_cast< U32 * >( at ); }

  File * file_ = nullptr;
};

/// The buckets of a mapped file.
template< class M >
class Buckets {
 public:
  using File = typename M::File;

  Buckets() = default;
  explicit Buckets( File & file ) : file_( &file ) {}

  U64 * at( U32 bucket ) const {
    return reinterpret_cast< U64 * >( file_->base() + BucketTable::firstBucketAt ) + bucket;
  }
  U64 * numBuckets() const {
    return reinterpret_cast< U64 * >( file_->base() + BucketTable::numBucketsAt );
  }
  Mem::VersionedRef headOf( U32 bucket ) const { return Mem::unpacked( M::load( at( bucket ) ) ); }
  /// As many as the mapping covers.
  U32 numMapped() const {
    return file_->size() < BucketTable::firstBucketAt
               ? 0
               : static_cast< U32 >( ( file_->size() - BucketTable::firstBucketAt ) / 8 );
  }
  File & file() const { return *file_; }

 private:
  File * file_ = nullptr;
};

}  // namespace Quill
