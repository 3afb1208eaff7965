// Mirror.h: one end of an attribute log. Two of them, one at each end of a byte stream, keep two
// trees of entities equal. docs/attribute-log.md has the bytes and the rules.
//
// A mirror does no input or output: it is given the bytes that came and fills a buffer with those
// that are to go. One thread, that of its tree.
//
// R1  One flush is under way at a time: the next begins when the peer has acknowledged the last.
// R2  A flush is applied whole, as one transaction, when its end has come.
// R3  A proxy writes nothing before it has applied the source's first flush.
#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <koi/AdapterTable.h>
#include <koi/FlowOut.h>

namespace Koi {

/// What an attribute log has seen so far.
struct MirrorCounts {
  U64 flushesOut = 0;  ///< written to their end
  U64 flushesIn = 0;   ///< applied
  U64 refused = 0;     ///< changes of the peer that a mutator refused
  U64 unknown = 0;     ///< frames of attributes or types that are not known here
  U64 forgotten = 0;   ///< frames of entities that are gone
  U64 unwritable = 0;  ///< values left out because they do not fit a log
  U64 exceptions = 0;  ///< raised by observers while the peer's changes were told
  U64 restarts = 0;    ///< of the connection
};

class KOI_PUBLIC Mirror {
 public:
  /// The source's tree is right where the two differ when a connection begins; then the proxy's
  /// changes win over those that the source makes at the same time.
  enum Role : U8 { source, proxy };

  /// Attaches the tree below `root`. A source that is not `writable` refuses what the proxy
  /// changes; a proxy that is not, or whose source is not, refuses changes made in its own
  /// process: ReadOnlyException.
  Mirror( Ptr< Entity > root, Role role, bool writable = true );
  /// Detaches it; the tree stays as it is.
  ~Mirror();
  Mirror( Mirror const & ) = delete;
  Mirror & operator=( Mirror const & ) = delete;

  Role role() const { return role_; }
  Entity & root() const { return *root_; }

  /// Appends to `out` what there is to be said now, and not much more than `most` bytes of it: the
  /// rest comes with further calls. Changes of the state that the peer has not been told yet cost
  /// no memory but their marks.
  void flush( NboAttrLog::Out & out, std::size_t most = 256 * 1024 );
  /// Whether flush() would write something.
  bool hasOutput() const;
  /// Called when flush() has something to write and had nothing before. It runs inside mutators:
  /// let it note the fact and no more.
  void onOutput( std::function< void() > called ) { onOutput_ = std::move( called ); }

  /// Takes in bytes that came from the peer, cut anywhere. Raises ParseException for bytes that
  /// cannot be; then end the connection and call restart().
  void received( void const * bytes, std::size_t size );

  /// The connection was cut: begins with the greeting again, on the next one. What was not
  /// acknowledged is sent again.
  void restart();
  /// The same on the connection that there is; the peer begins anew when the greeting comes.
  void beginAnew();

  /// True when both ends have greeted and, on a proxy, the source's first flush is applied.
  bool isSynchronised() const { return isEstablished_ && ( role_ == source || numIn_ != 0 ); }

  MirrorCounts const & counts() const { return counts_; }
  /// Why a change of the peer's was refused last: "<full name>.<attribute>: <why>".
  std::string const & lastRefusal() const { return lastRefusal_; }
  /// What an observer's exception said last.
  std::string const & lastException() const { return lastException_; }

  // ---- for adapters, and for what they write and read
  U16 origin() const { return origin_; }
  AdapterTable & adapters() { return adapters_; }
  bool isWritingProxy() const { return role_ == proxy && !isReadOnlyProxy(); }
  bool isReadOnlyProxy() const { return role_ == proxy && !( writable_ && peerIsWritable_ ); }
  bool acceptsWrites() const { return role_ == proxy || writable_; }
  void dirtyIs( KoiNboAttrLogSa & adapter );
  /// The peer knows of the entity from now on.
  void knownIs( KoiNboAttrLogSa & adapter );
  void adapterGoes( KoiNboAttrLogSa const & adapter );
  bool hasRoom( bool insideWhole );
  void sendAttribute( KoiNboAttrLogSa & adapter, unsigned attribute );
  KoiNboAttrLogSa & attached( Entity & entity, KoiNboAttrLogSa::SyncMode mode );
  void peerHas( Entity & entity, U64 number, U64 incarnation, KoiNboAttrLogSa::SyncMode mode );
  /// The peer has an equal child of its own, and is to hear of ours.
  void peerHasToo( Entity & entity, U64 number, U64 incarnation );
  /// The peer has another one in its place: all of it, and below, is told under new numbers.
  void peerLacks( Entity & entity );
  /// Whether the peer counts incarnations as it did on the connection before.
  bool isSameInstance() const { return peerInstance_ == knownInstance_; }
  /// The entity without a parent that stands there; null when it is of a type that is not known
  /// here, or refused. False when it is one that has gone here.
  bool orphan( FlowIn & flow, Ptr< Entity > & target );
  /// So many orphans are being read or written that refer to one another.
  unsigned orphanDepth = 0;
  /// The peer's change cannot be made until something is here; then all is to be told again.
  void restartIsDue() {
    isRestartDue_ = true;
    wantOutput();
  }
  void refused( KoiNboAttrLogSa const & adapter, unsigned attribute, std::string const & why );

  void leftOut( std::string const & why ) {
    ++counts_.unwritable;
    lastRefusal_ = why;
  }
  /// How many flushes were taken in, with the one that is being applied.
  U64 numApplied() const { return numApplied_; }
  /// What is applied now is the first of the connection: it may say what is older than that.
  bool isFirstFlush() const { return numIn_ == 0; }
  void waits();
  /// Something came below some entity of this thread: what waits for it may look again.
  static void appeared();

 private:
  enum class Frame : U8 { hello = 1, type, begin, attribute, end, ack, orphanGone };
  struct Incoming {
    Frame kind;
    NboAttrLog::In body;
    std::size_t next;  // where the one behind it begins
  };

  void wantOutput();
  U8 * startFrame( Frame kind, std::size_t size );
  /// Writes what control_ holds.
  void writeFrame( Frame kind );
  void writeHello();
  void writeAck();
  void writeType( KoiType const & node );
  void beginFlush();
  void endFlush();
  void forgetConnection();

  /// The frame that begins there; nothing when it is not there to its end.
  static std::optional< Incoming > frameAt( std::vector< U8 > const & bytes, std::size_t at );
  /// What came before that place is done with.
  void doneIs( std::size_t done );
  void greeted( NboAttrLog::In in );
  void acknowledged( NboAttrLog::In in );
  /// Runs `work` as a transaction; what observers raise stays here.
  void apply( std::function< void() > const & work );
  void applyFlush( std::vector< U8 > const & bytes );
  void applyFrame( Frame kind, NboAttrLog::In in );
  void applyType( NboAttrLog::In & in );
  /// The peer has that entity without parent no longer.
  void orphanGone( U64 number );
  /// False when there is no such entity, or not yet.
  bool applyAttribute( NboAttrLog::In in );
  /// The same, or keeps it until the flush has brought the entity.
  void claimOrKeep( NboAttrLog::In in );
  /// Applies what waits for something that the flush brought.
  void claim();
  void settleTouched();
  void resolve( bool isLast = false );
  void onNotificationException( std::string const & what );

  Ptr< Entity > const root_;
  Role const role_;
  bool const writable_;
  U16 const origin_;
  std::function< void() > onOutput_;
  MirrorCounts counts_;
  std::string lastRefusal_, lastException_;

  // The connection. A session is what a greeting begins.
  U64 session_ = 1, peerSession_ = 0;
  U64 peerInstance_ = 0;
  U64 knownInstance_ = 0;  // whose incarnations the adapters know
  bool peerIsWritable_ = true;
  bool isEstablished_ = false;
  bool isHelloDue_ = true;

  // Out.
  FlowOut flow_{ *this };
  Ptr< NboAttrLog::Out > const control_{ new NboAttrLog::Out };
  NboAttrLog::Out * out_ = nullptr;  // while flush() runs
  std::size_t outMost_ = 0;
  std::size_t flushSize_ = 0;
  U64 numOut_ = 0;              // flushes begun in this session
  bool isOpen_ = false;         // one is written in part
  bool isAwaiting_ = false;     // one is written, and not acknowledged
  bool isFirstDue_ = false;     // a source's first, be there anything to tell or not
  bool isInsideWhole_ = false;  // what stopped for lack of room is a collection's first flow
  bool isWanted_ = false;
  std::unordered_set< KoiType const * > typesOut_;
  std::vector< U64 > orphansGone_;

  // In.
  std::vector< U8 > in_;
  std::size_t done_ = 0;          // what is before need not stay
  std::size_t scanned_ = 0;       // the frames before are complete
  bool isFlushIncoming_ = false;  // begun, and its end has not come
  U64 numApplied_ = 0;
  U64 numIn_ = 0;  // flushes applied in this session
  bool isAckDue_ = false;
  bool isRestartDue_ = false;
  bool hasAppeared_ = false;
  std::unordered_map< KoiType const *, std::vector< int > > typesIn_;  // ours by the peer's index
  std::unordered_map< U64, Ptr< Entity > > orphans_;
  std::vector< std::pair< U64, unsigned > > touched_;
  std::vector< NboAttrLog::In > unclaimed_;  // of the flush: attributes of no entity so far
  std::unordered_set< U64 > unclaimedNumbers_;

  AdapterTable adapters_;  // last: adapters go first
};

}  // namespace Koi
