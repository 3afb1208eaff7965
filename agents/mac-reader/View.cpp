#include "View.h"

#include <algorithm>
#include <map>
#include <vector>

#include <mem/Rova.h>
#include <quill/QuillException.h>
#include <reactors/FdbCopy.h>

namespace MacReader {

using Bridging::Fid;
using Bridging::HostKey;
using Quill::QuillType;

namespace {

Koi::Ptr< Quill::Bridging::Status > tableOf( QuillType mode, Koi::Activity * activity,
                                             Mem::RootPath const & root,
                                             std::string const & name ) {
  auto const table = Quill::Bridging::statusFactory( Koi::Name( "fdb" ) );
  Quill::QuillParameters parameters;
  parameters.activity = activity;
  parameters.root = root;
  table->quillFdbStatusControl().init( mode, false, 1, parameters, name );
  return table;
}

Koi::Ptr< Bridging::Status > hostsIn( Quill::Bridging::Status const & table ) {
  auto const status = Bridging::statusFactory( Koi::Name( "hosts" ) );
  Bridging::copyFdb( table, *status );
  return status;
}

/// What was there at one look and is not at the next has gone.
class DirectView final : public View {
 public:
  DirectView( Koi::Activity * activity, Koi::Ptr< Quill::Bridging::Status > table )
      : table_( std::move( table ) ), timer_( activity, [this] { look(); } ) {
    timer_.delayIs( 0 );
  }

  Koi::Ptr< Bridging::Status > hosts() override { return hostsIn( *table_ ); }

 private:
  static constexpr Koi::Seconds lookEvery = 0.05;

  void look() {
    timer_.delayIs( lookEvery );
    auto const & control = table_->quillFdbStatusControl();
    if( !control.isReady() || !control.map().isAttached() )
      return;
    std::vector< std::pair< unsigned, Wirex::EthAddr > > now;
    try {
      for( auto const & entry : table_->quillFdbStatus() )
        now.emplace_back( entry.key().fid().value(), entry.key().addr() );
    } catch( Quill::ReaderStarvedException const & ) {
      return;  // it looks again
    } catch( Rova::CorruptionDetectedException const & e ) {
      return table_->quillFdbStatusControl().corruptionDetected( e.what() );
    }
    std::ranges::sort( now );
    std::vector< std::pair< unsigned, Wirex::EthAddr > > gone;
    std::ranges::set_difference( before_, now, std::back_inserter( gone ) );
    numDeletions_ += gone.size();
    before_ = std::move( now );
  }

  Koi::Ptr< Quill::Bridging::Status > const table_;
  std::vector< std::pair< unsigned, Wirex::EthAddr > > before_;  // in order
  Koi::Timer timer_;
};

/// A key that is told of and is not there has gone.
class ToldView final : public View, private Quill::Bridging::Status::NotifieeConst {
 public:
  explicit ToldView( Koi::Ptr< Quill::Bridging::Status > table ) : table_( std::move( table ) ) {
    notifierIs( table_.ptr() );
  }

  Koi::Ptr< Bridging::Status > hosts() override { return hostsIn( *table_ ); }

 private:
  using NotifieeConst::onQuillFdbStatus;
  void onQuillFdbStatus( HostKey const & key ) override {
    if( !table_->quillFdbStatus().contains( key ) )
      ++numDeletions_;
  }

  Koi::Ptr< Quill::Bridging::Status > const table_;
};

/// The status that ReaderFdbStatusSm keeps, and the hosts that leave it.
class StatusView final : public View, private Bridging::Status::NotifieeConst {
 public:
  explicit StatusView( Koi::Ptr< Quill::Bridging::Status > const & table )
      : status_( Bridging::statusFactory( Koi::Name( "hosts" ) ) ) {
    notifierIs( status_.ptr() );
    mirror_ = Bridging::readerFdbStatusSmFactory( table, status_ );
  }

  Koi::Ptr< Bridging::Status > hosts() override { return status_; }

 private:
  class OfDatabase final : public Bridging::FdbStatus::NotifieeConst {
   public:
    OfDatabase( Bridging::FdbStatus const & fdb, Koi::U64 & numDeletions )
        : numDeletions_( numDeletions ) {
      notifierIs( &fdb );
    }

   private:
    using NotifieeConst::onLearnedHost;
    void onLearnedHost( Wirex::EthAddr const & address ) override {
      if( !notifier()->learnedHost().contains( address ) )
        ++numDeletions_;
    }
    Koi::U64 & numDeletions_;
  };

  using NotifieeConst::onFdbStatus;
  void onFdbStatus( Fid const & fid ) override {
    databases_.erase( fid.value() );
    if( auto const fdb = status_->fdbStatus( fid ) )
      databases_.try_emplace( fid.value(), *fdb, numDeletions_ );
  }

  Koi::Ptr< Bridging::Status > const status_;
  std::map< unsigned, OfDatabase > databases_;
  Koi::Ptr< Bridging::ReaderFdbStatusSm > mirror_;
};

}  // namespace

std::unique_ptr< View > view( Mode mode, Koi::Activity * activity, Mem::RootPath const & root,
                              std::string const & name ) {
  switch( mode ) {
    case Mode::direct:
      return std::make_unique< DirectView >( activity,
                                             tableOf( QuillType::reader, activity, root, name ) );
    case Mode::keyshadow:
      return std::make_unique< ToldView >( tableOf( QuillType::keyshadow, activity, root, name ) );
    case Mode::shadow:
      return std::make_unique< ToldView >( tableOf( QuillType::shadow, activity, root, name ) );
    case Mode::status:
      break;
  }
  return std::make_unique< StatusView >( tableOf( QuillType::shadow, activity, root, name ) );
}

}  // namespace MacReader
