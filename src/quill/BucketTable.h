// BucketTable.h: the bucket file of a table: its header, and when it is believed. Written by the
// writer process alone.
//
//     0  magic        8  "QUILLBKT"
//     8  version      4  2
//    12  kindle       4  the generation the file was formatted under
//    16  numBuckets   8  Mem::VersionedRef; the count is a power of two
//    24  reserved     8
//    32  buckets         8 each, Mem::VersionedRef: the counter grows by 4, then the chain's first
//    link
#pragma once

#include <cstddef>
#include <string>

#include <mem/Words.h>
#include <ntrace/Ntrace.h>
#include <quill/Links.h>

namespace Quill {

struct KOI_PUBLIC BucketTable {
  static constexpr char fileName[] = "buckets";
  static constexpr U32 numBucketsAt = 16, firstBucketAt = 32;

  class Header;

  static constexpr U64 bucketAt( U32 bucket ) { return firstBucketAt + U64{ bucket } * 8; }
  static constexpr U64 fileSize( U32 numBuckets ) { return bucketAt( numBuckets ); }
};

class KOI_PUBLIC BucketTable::Header {
 public:
  static constexpr U32 currentVersion = 2;

  Header() = default;
  Header( U32 kindle, U32 numBuckets );

  /// As SlotTable::Header::validate().
  bool validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle,
                 std::string & message ) const;
  void trace( Ntrace::Handler const & handler ) const;

  U32 magic[2]{};
  U32 version = 0;
  U32 kindle = 0;
  Mem::VersionedRef numBuckets;
  U32 reserved[2]{};
};

static_assert( offsetof( BucketTable::Header, numBuckets ) == BucketTable::numBucketsAt );
static_assert( sizeof( BucketTable::Header ) == BucketTable::firstBucketAt );

}  // namespace Quill
