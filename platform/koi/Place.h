// Place.h: how far an attribute log has come with one collection, and how a change is stamped.
//
// An entity counts its changes; each change of a member carries that count and who made it. A place
// belongs to its log, which hands it to the collection and takes it back before either goes; only
// the collection writes it.
#pragma once

#include <koi/Slab.h>

namespace Koi {

/// The number of a change, which grows with every one in the collection, and who made it: 0 this
/// program, else the log that brought it.
struct Stamp {
  U64 change = 0;
  U16 origin = 0;
};

/// What a mutator did.
enum class Change : U8 { unchanged, changed, created };

/// What a log is to tell of a key: it is there, it is not, or it went and another one came.
enum class MemberState : U8 { present, absent, anew };

/// P1  acked <= sent <= told.
/// P2  What changed up to `sent` the peer was told, but for what a whole flow under way will tell.
struct Place {
  /// `origin_` is the log's own: what it brought is not told to it.
  explicit Place( U16 origin_ ) : origin( origin_ ) {}

  U16 const origin;
  bool started = false;     ///< the first flow has begun
  bool whole = false;       ///< the first flow is under way
  bool wholeAcked = false;  ///< the peer has all of the first flow
  U64 sent = 0;             ///< the peer was told of the changes up to this one
  U64 acked = 0;            ///< and says that it has those up to this one
  U64 told = 0;             ///< it may have heard of members made up to this change
  U64 flushed = 0;          ///< what `sent` was when nothing more was to be told
  U64 flushedAcked = 0;     ///< and what that was when the peer last acknowledged
  U64 begun = 0;            ///< what `sent` was when the first flow began

  U32 bookmark = 0;   ///< the slot where the first flow goes on
  U32 layout = 0;     ///< the layout of the slots when it stopped
  U32 hint = noSlot;  ///< the first that is not sent; noSlot: look from the tail

  /// What changed up to here is no longer of interest.
  U64 past() const { return acked > begun ? acked : begun; }
};

}  // namespace Koi
