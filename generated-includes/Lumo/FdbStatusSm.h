// FdbStatusSm.h: written by koigen from FdbStatusSm.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Reactor.h>
#include <Lumo/Bridging.h>
#include <Lumo/QuillBridging.h>
#include <wirex/EthAddr.h>

namespace Bridging {

/// Copies the learned hosts into the table that this process writes. Whatever is in the table when
/// it comes, it holds exactly the hosts afterwards, and of what was right nobody is told. A host
/// that finds no room is written when there is some.
class KOI_PUBLIC WriterFdbStatusSm : public Koi::ReactorOf< WriterFdbStatusSm > {
 public:
  WriterFdbStatusSm( Koi::Ptr< Status > const & status,
                     Koi::Ptr< Quill::Bridging::Status > const & quillStatus );

  /// the learned hosts
  Koi::Ptr< Status > status() const { return status_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void statusIs( Koi::Ptr< Status > const & entity );
  /// Watches nothing from now on.
  void statusDel();

  /// where they are written
  Koi::Ptr< Quill::Bridging::Status > quillStatus() const { return quillStatus_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void quillStatusIs( Koi::Ptr< Quill::Bridging::Status > const & entity );
  /// Watches nothing from now on.
  void quillStatusDel();

  /// the filtering databases that there are
  Koi::Ptr< FdbStatus > fdbStatus( Fid const & k ) const;
  std::vector< Fid > fdbStatusKeys() const;
  /// Watches that one under that key from now on; null is refused.
  void fdbStatusIs( Fid const & k, Koi::Ptr< FdbStatus > const & entity );
  void fdbStatusDel( Fid const & k );
  void fdbStatusDelAll();

  /// the table was there, and was made equal
  bool initialized() const { return initialized_; }
  void initializedIs( bool v ) { koiIs( initialized_, v ); }

  class KoiPendingHost;
  /// hosts that found no room
  bool pendingHost( HostKey const & k ) const;
  Koi::HashMap< KoiPendingHost, HostKey, bool > const & pendingHost() const { return pendingHost_; }
  using PendingHostIterator = Koi::HashMap< KoiPendingHost, HostKey, bool >::Iterator;
  PendingHostIterator pendingHostIterator();
  void pendingHostIs( HostKey const & k, bool v );
  bool pendingHostDel( HostKey const & k );
  bool pendingHostDel( PendingHostIterator const & i );
  void pendingHostDelAll();

  /// how often one did
  Koi::U32 numRefused() const { return numRefused_; }
  void numRefusedIs( Koi::U32 v ) { koiIs( numRefused_, v ); }

  static constexpr char koiName[] = "Bridging::WriterFdbStatusSm";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_status", &WriterFdbStatusSm::status ),
      Koi::parameter( "_quillStatus", &WriterFdbStatusSm::quillStatus )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleFdbStatus( Fid const & key );
  void handleQuillFdbStatus();
  void handleLearnedHost( Fid const & watched, Wirex::EthAddr const & key );
  void handleStatus();

  class KoiStatus : public Status::NotifieeConst {
   public:
    explicit KoiStatus( WriterFdbStatusSm * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onFdbStatus;
    void onFdbStatus( Fid const & key ) override {
      Koi::Ptr< WriterFdbStatusSm >( reactor_ )->handleFdbStatus( key );
    }

   private:
    WriterFdbStatusSm * reactor_;
  };

  class KoiQuillStatus : public Quill::Bridging::Status::NotifieeConst {
   public:
    explicit KoiQuillStatus( WriterFdbStatusSm * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onQuillFdbStatus;
    void onQuillFdbStatus() override {
      Koi::Ptr< WriterFdbStatusSm >( reactor_ )->handleQuillFdbStatus();
    }

   private:
    WriterFdbStatusSm * reactor_;
  };

  class KoiFdbStatus : public FdbStatus::NotifieeConst {
   public:
    KoiFdbStatus( WriterFdbStatusSm * reactor, Fid const & key )
        : reactor_( reactor ), key_( key ) {}
    Fid fwkKey() const { return key_; }
    using NotifieeConst::onLearnedHost;
    void onLearnedHost( Wirex::EthAddr const & key ) override {
      Koi::Ptr< WriterFdbStatusSm >( reactor_ )->handleLearnedHost( Koi::copyOf( key_ ), key );
    }

   private:
    WriterFdbStatusSm * reactor_;
    Fid const key_;
  };

  void koiStart() override { handleStatus(); }

  Koi::Watched< KoiStatus, Status > status_;
  Koi::Watched< KoiQuillStatus, Quill::Bridging::Status > quillStatus_;
  Koi::WatchedEach< KoiFdbStatus, Fid, FdbStatus > fdbStatus_;
  bool initialized_{};
  Koi::HashMap< KoiPendingHost, HostKey, bool > pendingHost_;
  Koi::U32 numRefused_{};
};

/// A new WriterFdbStatusSm that listens.
KOI_PUBLIC Koi::Ptr< WriterFdbStatusSm > WriterFdbStatusSmIs( Koi::Ptr< Status > const & status,
    Koi::Ptr< Quill::Bridging::Status > const & quillStatus );
KOI_PUBLIC Koi::Ptr< WriterFdbStatusSm > writerFdbStatusSmFactory(
    Koi::Ptr< Status > const & status, Koi::Ptr< Quill::Bridging::Status > const & quillStatus );

/// Copies the table, which another process writes, into a bridge's status in this one. It is told
/// of changes by key, for which a table that is only read keeps the keys.
class KOI_PUBLIC ReaderFdbStatusSm : public Koi::ReactorOf< ReaderFdbStatusSm > {
 public:
  ReaderFdbStatusSm( Koi::Ptr< Quill::Bridging::Status > const & quillStatus,
                     Koi::Ptr< Status > const & status );

  /// what is copied
  Koi::Ptr< Quill::Bridging::Status > quillStatus() const { return quillStatus_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void quillStatusIs( Koi::Ptr< Quill::Bridging::Status > const & entity );
  /// Watches nothing from now on.
  void quillStatusDel();

  /// where the hosts are to be
  Koi::Ptr< Status > status() const { return _status; }

  static constexpr char koiName[] = "Bridging::ReaderFdbStatusSm";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_quillStatus", &ReaderFdbStatusSm::quillStatus ),
      Koi::parameter( "_status", &ReaderFdbStatusSm::status )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleQuillFdbStatus( HostKey const & key );
  void handleQuillFdbStatus();
  void handleQuillFdbStatuses();

  class KoiQuillStatus : public Quill::Bridging::Status::NotifieeConst {
   public:
    explicit KoiQuillStatus( ReaderFdbStatusSm * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onQuillFdbStatus;
    void onQuillFdbStatus( HostKey const & key ) override {
      Koi::Ptr< ReaderFdbStatusSm >( reactor_ )->handleQuillFdbStatus( key );
    }
    void onQuillFdbStatus() override {
      Koi::Ptr< ReaderFdbStatusSm >( reactor_ )->handleQuillFdbStatus();
    }

   private:
    ReaderFdbStatusSm * reactor_;
  };

  void koiStart() override { handleQuillFdbStatuses(); }

  Koi::Watched< KoiQuillStatus, Quill::Bridging::Status > quillStatus_;
  Koi::Ptr< Status > const _status;
};

/// A new ReaderFdbStatusSm that listens.
KOI_PUBLIC Koi::Ptr< ReaderFdbStatusSm > ReaderFdbStatusSmIs(
    Koi::Ptr< Quill::Bridging::Status > const & quillStatus, Koi::Ptr< Status > const & status );
KOI_PUBLIC Koi::Ptr< ReaderFdbStatusSm > readerFdbStatusSmFactory(
    Koi::Ptr< Quill::Bridging::Status > const & quillStatus, Koi::Ptr< Status > const & status );

}  // namespace Bridging
