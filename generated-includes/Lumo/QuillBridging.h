// QuillBridging.h: written by koigen from QuillBridging.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/RecordBytes.h>
#include <koi/Entity.h>
#include <quill/KoiQuillMap.h>
#include <Lumo/Bridging.h>
#include <Lumo/BridgingHostEntryType.h>
#include <wirex/IntfId.h>
#include <quill/HostHash.h>

namespace Quill::Bridging {

/// One learned MAC address as it lies in the table.
class KOI_PUBLIC QuillFdbStatus : public Koi::Structure< QuillFdbStatus > {
 public:
  QuillFdbStatus() = default;
  QuillFdbStatus( ::Bridging::HostKey const & key, Wirex::IntfId const & intf, Koi::U32 moves,
                  Koi::Seconds lastMoveTime, ::Bridging::EntryType entryType )
      : _key( key ), _intf( intf ), _moves( moves ), _lastMoveTime( lastMoveTime ),
        _entryType( entryType ) {}
  explicit QuillFdbStatus( ::Bridging::HostKey const & key ) : _key( key ) {}
  QuillFdbStatus( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  QuillFdbStatus( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the filtering database and the MAC address
  ::Bridging::HostKey key() const { return _key; }

  /// the interface it was learned on
  Wirex::IntfId intf() const { return _intf; }

  /// how many times it has moved between interfaces
  Koi::U32 moves() const { return _moves; }

  /// when it last moved, in seconds
  Koi::Seconds lastMoveTime() const { return _lastMoveTime; }

  /// how the entry came to be
  ::Bridging::EntryType entryType() const { return _entryType; }

  static constexpr char koiName[] = "Quill::Bridging::QuillFdbStatus";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "key", &QuillFdbStatus::_key ),
      Koi::field( "intf", &QuillFdbStatus::_intf ),
      Koi::field( "moves", &QuillFdbStatus::_moves ),
      Koi::field( "lastMoveTime", &QuillFdbStatus::_lastMoveTime ),
      Koi::field( "entryType", &QuillFdbStatus::_entryType )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  ::Bridging::HostKey _key{};
  Wirex::IntfId _intf{};
  Koi::U32 _moves{};
  Koi::Seconds _lastMoveTime{};
  ::Bridging::EntryType _entryType{};
};

/// The forwarding database of a bridge, for all processes: the bridging agent writes it.
class KOI_PUBLIC Status : public Koi::EntityOf< Status > {
 public:
  explicit Status( Koi::Name const & name );

  /// the learned MAC addresses
  QuillFdbStatus quillFdbStatus( ::Bridging::HostKey const & k ) const;
  KoiQuill::KoiQuillMap< ::Bridging::HostKey, QuillFdbStatus > const & quillFdbStatus() const {
    return quillFdbStatus_;
  }
  using QuillFdbStatusIterator = KoiQuill::KoiQuillMap< ::Bridging::HostKey,
      QuillFdbStatus >::Iterator;
  QuillFdbStatusIterator quillFdbStatusIterator();
  /// In the process that writes the table: an entry that is there already is no change. Raises
  /// Quill::TableFullException.
  void quillFdbStatusIs( QuillFdbStatus const & v );
  QuillFdbStatus quillFdbStatusDel( ::Bridging::HostKey const & k );
  QuillFdbStatus quillFdbStatusDel( QuillFdbStatusIterator const & i );
  void quillFdbStatusDelAll();
  /// Opens the value's entry for writing in place: until it is completed readers have it as it was.
  void newQuillFdbStatus( QuillFdbStatus const & v );
  void quillFdbStatusCommit( QuillFdbStatus const & v );
  void quillFdbStatusNotify( ::Bridging::HostKey const & k );
  void quillFdbStatusNotifyCollection();
  /// How this process takes part in the table.
  KoiQuill::KoiQuillMapBase & quillFdbStatusControl() { return quillFdbStatus_; }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Status > {
   public:
    /// The table is there, and what is in it can be looked up.
    virtual void onQuillFdbStatus() {}
    virtual void onQuillFdbStatus( ::Bridging::HostKey const & ) {}
    virtual void onQuillFdbStatusKoiImmediate() {
      koiPass( koiOnQuillFdbStatusControl ); onQuillFdbStatus();
    }
    virtual void onQuillFdbStatusKoiImmediate( ::Bridging::HostKey const & k ) {
      koiPass( koiOnQuillFdbStatus ); onQuillFdbStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        ::Bridging::HostKey const & > koiOnQuillFdbStatus{
      koiFirst + 0, &NotifieeConst::onQuillFdbStatus,
          &NotifieeConst::onQuillFdbStatusKoiImmediate };
    static constexpr Koi::Callback< NotifieeConst > koiOnQuillFdbStatusControl{
      koiFirst + 1, &NotifieeConst::onQuillFdbStatus,
          &NotifieeConst::onQuillFdbStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Status >;

  static constexpr char koiName[] = "Quill::Bridging::Status";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Status::name )
    };
  }
  template< class Self = Status >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::table( "quillFdbStatus", &Self::quillFdbStatus_ ),
      Koi::tableControl( "quillFdbStatusControl", &Self::quillFdbStatus_ )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  KoiQuill::KoiQuillMap< ::Bridging::HostKey, QuillFdbStatus > quillFdbStatus_{
      *this, "quillFdbStatus", NotifieeConst::koiOnQuillFdbStatus,
      NotifieeConst::koiOnQuillFdbStatusControl };
};

/// A new Status without a parent.
KOI_PUBLIC Koi::Ptr< Status > statusFactory( Koi::Name const & name );

}  // namespace Quill::Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Quill_Bridging_QuillFdbStatus {
  using GenericIf_ = Koi::GenericValue< Quill::Bridging::QuillFdbStatus >;
}

/// How a QuillFdbStatus lies in a slot: 32 bytes, of which the key takes the first 8.
///
///        0  key.fid         2
///        2  key.addr        6
///        8  intf            8
///       16  moves           4
///       20  lastMoveTime    8
///       28  entryType       4
///
/// What is read is what lies there, in its range or not: a slot that was never used has a key of
/// zeros.
template<>
struct Quill::Record< Quill::Bridging::QuillFdbStatus > {
  using Value = ::Quill::Bridging::QuillFdbStatus;
  using Key = ::Bridging::HostKey;

  static constexpr char valueType[] = "Quill::Bridging::QuillFdbStatus";
  static constexpr Koi::U32 keySize = 8;
  static constexpr Koi::U32 valueSize = 32;

  /// Fills the words of a key.
  static void putKey( Key const & key, Koi::U32 * words ) {
    Koi::recordPut< 0, 2 >( words, key.fid() );
    Koi::recordPut< 2, 6 >( words, key.addr() );
  }
  /// Fills the words of a slot.
  static void put( Value const & value, Koi::U32 * words ) {
    putKey( value.key(), words );
    Koi::recordPut< 8, 8 >( words, value.intf() );
    Koi::recordPut< 16, 4 >( words, value.moves() );
    Koi::recordPut< 20, 8 >( words, value.lastMoveTime() );
    Koi::recordPut< 28, 4 >( words, value.entryType() );
  }
  /// Out of the words of a slot.
  static Key key( Koi::U32 const * words ) {
    return Key(
        Koi::recordGet< ::Bridging::Fid, 0, 2 >( words ),
        Koi::recordGet< ::Wirex::EthAddr, 2, 6 >( words ) );
  }
  static Value value( Koi::U32 const * words ) {
    return Value(
        key( words ),
        Koi::recordGet< ::Wirex::IntfId, 8, 8 >( words ),
        Koi::recordGet< Koi::U32, 16, 4 >( words ),
        Koi::recordGet< Koi::Seconds, 20, 8 >( words ),
        Koi::recordGet< ::Bridging::EntryType, 28, 4 >( words ) );
  }
  /// Of the key in these words.
  static Koi::U32 hash( Koi::U32 const * words, Koi::U32 seed ) {
    return BucketHash< Key >::of( key( words ), seed );
  }
};
