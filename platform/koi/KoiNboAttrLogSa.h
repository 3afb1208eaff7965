// KoiNboAttrLogSa.h: the adapter between one entity and one attribute log: what of it the peer is
// still to be told, and what the peer has not acknowledged. The entity owns it; the Mirror, which
// is the log's end, drives it. One thread.
//
// A change is a mark, never a message: one for each scalar, and for each key of a collection what
// Place.h says. So what a peer that does not read costs depends on the state, not on the changes.
//
// A1  An adapter that the peer knows and that has something dirty, or answers waiting, is in the
//     mirror's list of dirty ones; one with something sent is in the list of sent ones.
// A2  `begun` implies `whole`, and `whole` implies `fresh`.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <boost/intrusive/list.hpp>

#include <koi/AttributeAccess.h>
#include <koi/Entity.h>
#include <koi/EntityLogs.h>

namespace Koi {

class FlowIn;
class FlowOut;

/// The lists that a mirror keeps of its adapters: of all, of those with something to tell, of those
/// with something that is not acknowledged, of those that wait for the target of a reference.
struct AllAdapters;
struct DirtyAdapters;
struct SentAdapters;
struct WaitingAdapters;
template< class Of >
using AdapterHook = boost::intrusive::list_base_hook<
    boost::intrusive::tag< Of >, boost::intrusive::link_mode< boost::intrusive::auto_unlink > >;

/// What the peer said of a scalar, a child or a member, and the flush with which it came.
struct WaitingOperation {
  std::string bytes;
  U64 since;
};

/// What one log knows of one entity: its marks, what waits, its numbers on the connection.
class KOI_PUBLIC KoiNboAttrLogSa : public AdapterHook< AllAdapters >,
                                   public AdapterHook< DirtyAdapters >,
                                   public AdapterHook< SentAdapters >,
                                   public AdapterHook< WaitingAdapters > {
 public:
  /// Everything is to be told to the peer, or what changes from now on.
  enum SyncMode : U8 { fullResync, incremental };

  KoiNboAttrLogSa( Mirror & mirror, Entity & entity, SyncMode mode );
  ~KoiNboAttrLogSa();
  KoiNboAttrLogSa( KoiNboAttrLogSa const & ) = delete;
  KoiNboAttrLogSa & operator=( KoiNboAttrLogSa const & ) = delete;

  Entity & entity() const { return entity_; }
  Mirror & mirror() const { return mirror_; }

  /// Attaches the entity to another log, for a new connection; all of it is to be told there.
  KoiNboAttrLogSa & cloneSa( Mirror & out ) const;
  /// fullResync: tells the peer the whole entity again, by difference. It hears of its children,
  /// and of theirs only what changes.
  void syncModeIs( SyncMode mode );
  /// The same for one attribute.
  void tellWhole( unsigned attribute );
  /// The entity has another place in the tree of the peer: all is to be told there.
  void doRemountSelf() { syncModeIs( fullResync ); }

  // ---- marks
  bool koiIsAttrDirty( unsigned attribute ) const { return is( attribute, dirty ); }
  /// Marks an attribute: what it is then is told to the peer; or takes a mark away.
  void koiIsAttrDirtyIs( unsigned attribute, bool isDirty );
  /// The peer does not have, or has not acknowledged, what became of the attribute here.
  bool isUnsettled( unsigned attribute ) const { return is( attribute, dirty | sent | fresh ); }
  /// The same for all of a collection, whatever its keys.
  bool isFresh( unsigned attribute ) const { return is( attribute, fresh ); }
  Place & place( unsigned attribute ) const { return *places_[attribute]; }
  /// What the source said of a queue was left, for it had been changed here.
  void isCrossedIs( unsigned attribute ) {
    marks_[attribute] |= crossed;
    koiIsAttrDirtyIs( attribute, true );
  }
  /// The peer is told again what the attribute is; once, until that changes.
  void insist( unsigned attribute );
  /// The attribute changed: by the peer, or by somebody else.
  void changedBy( unsigned attribute, bool byPeer );
  bool hasDirt() const;
  /// The member of the key in these bytes is told to the peer as it is, changed or not.
  void answer( unsigned attribute, std::string key );

  // ---- out
  /// Writes the attribute's frame; true when there is no more to tell of it.
  bool handleAttrFlowOut( unsigned attribute, FlowOut & flow );
  /// Sends all that is marked; false when the mirror has no room for more.
  bool flowOut( FlowOut & flow );
  /// Writes the entity, which has no parent, for a reference to it: its number and, the first time,
  /// its type, its name and what it is made from. Its attributes follow.
  void doSerializeOrphan( FlowOut & flow );
  /// Puts the place where the first flow of a collection stands aside, and takes it up again.
  U32 koiFlowOutBookmarkEnq( unsigned attribute ) const { return place( attribute ).bookmark; }
  void koiFlowOutBookmarkDeq( unsigned attribute, U32 mark ) const {
    place( attribute ).bookmark = mark;
  }
  /// The peer has all that was sent.
  void ack();
  /// The peer may lack what it did not acknowledge; it knows the entity by no number.
  void unsend();

  // ---- in
  /// Applies what the peer says of an attribute. Raises ParseException.
  void handleAttrDeserialization( FlowIn & flow );
  /// The peer's changes since are settled, where nothing of ours is under way: they need not be
  /// looked at again.
  void settle( unsigned attribute );
  /// Whether the peer may change the entity.
  bool readOnlyRemoteOk() const;
  /// Whether changes made here are refused.
  bool isReadOnlyProxy() const;
  /// Where the first flow of a collection, under way, keeps what it knows; null: none is.
  std::unique_ptr< ResyncState > & resyncState( unsigned attribute ) { return resync_[attribute]; }
  void freeResyncState( unsigned attribute ) { resync_.erase( attribute ); }

  // ---- what refers to something that is not here yet
  void unresolvedIs( unsigned attribute, std::string const & key, WaitingOperation operation );
  /// True when it waited since an earlier flush.
  bool unresolvedDel( unsigned attribute, std::string const & key );
  bool hasUnresolved() const { return !unresolved_.empty(); }
  /// Applies it again; what is still not here gets nothing when that is the last time.
  void retryUnresolved( bool isLast );

  // ---- what refers to the entity, for a source: it decides what the proxies see of that
  void referrerIs( KoiNboAttrLogSa & adapter, unsigned attribute, std::string key );
  /// It leaves the tree, or has another number: what refers to it is told again.
  void tellReferrers();

  // ---- for the mirror: the entity's numbers on this connection
  U64 number = 0;           ///< the one that we speak by; 0: none
  U64 peerIncarnation = 0;  ///< as the peer counts; 0: it never said
  bool isKnown = false;     ///< the peer knows what the number means
  bool isOrphan = false;    ///< the peer has it because something refers to it

 private:
  enum Mark : U8 {
    dirty = 1,
    sent = 2,      ///< and not acknowledged
    whole = 4,     ///< the first flow of the collection is not told to its end
    begun = 8,     ///< but has begun
    fresh = 16,    ///< the peer has not acknowledged the first flow
    crossed = 32,  ///< what the source said of the queue was left, and it is to hear that
    insisted = 64  ///< the peer was told the same once more
  };
  bool is( unsigned attribute, unsigned marks ) const { return ( marks_[attribute] & marks ) != 0; }

  Mirror & mirror_;
  Entity & entity_;
  std::vector< U8 > marks_;
  std::vector< std::unique_ptr< Place > > places_;
  std::set< std::pair< unsigned, std::string > > answers_;
  std::map< unsigned, std::unique_ptr< ResyncState > > resync_;
  std::map< std::pair< unsigned, std::string >, WaitingOperation > unresolved_;
  std::vector< std::tuple< U64, unsigned, std::string > > referrers_;  // number, attribute, key
  std::size_t sweepAt_ = 16;  // so many of them may be there twice
};

template< class Of >
using AdapterList =
    boost::intrusive::list< KoiNboAttrLogSa, boost::intrusive::base_hook< AdapterHook< Of > >,
                            boost::intrusive::constant_time_size< false > >;

}  // namespace Koi
