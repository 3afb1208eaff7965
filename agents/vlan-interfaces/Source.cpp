#include "Source.h"

#include <interface/TreePlaces.h>
#include <koi/EntityPath.h>
#include <koi/KeysOf.h>
#include <koi/Transaction.h>
#include <wirex/NumberedIntfId.h>

#include <charconv>
#include <sstream>
#include <stdexcept>

namespace VlanInterfaces {

using namespace Interface;
using Wirex::IntfId;

namespace {

Ntrace::Handler quiet() { return Ntrace::Handler( -1, {} ); }

template< class E >
Koi::Ptr< E > placed( Coredb::Dir & tree, char const * place ) {
  return dynamic_cast< E * >( Koi::entityNamed( tree, place ) );
}

template< class Number >
Number numberOf( std::string const & word, char const * what ) {
  constexpr Number most = 1'000'000;
  Number number = 0;
  char const * const end = word.data() + word.size();
  auto const [at, error] = std::from_chars( word.data(), end, number );
  if( error != std::errc() || at != end || !( number >= 0 ) || number > most )
    throw std::runtime_error( std::string( what ) + " '" + word + "' is no number" );
  return number;
}

IntfId vlanIntfOf( std::string const & word ) {
  IntfId const intfId{ Koi::String8( word ) };
  if( !Wirex::VlanIntfId::isVlanIntfId( intfId ) )
    throw std::runtime_error( "'" + word + "' is no VLAN interface" );
  return intfId;
}

VlanIntfConfigPriority priorityOf( std::string const & word ) {
  if( word == "low" )
    return configPriorityLow;
  if( word == "medium" )
    return configPriorityMedium;
  if( word == "high" )
    return configPriorityHigh;
  throw std::runtime_error( "priority '" + word + "': low, medium or high was expected" );
}

}  // namespace

/// Told of what the agent decides.
class Source::Watch final : public Lumo::DynVlanIntfList::NotifieeConst {
 public:
  explicit Watch( Source & source ) : source_( source ), errors_( source ), error_( source ) {
    notifierIs( source.list_ );
    errors_.notifierIs( placed< Coredb::Dir >( *source.tree_, vlanSourceErrorPlace ) );
    errors_.onEntity( source.name_ );
  }

  using NotifieeConst::onIntfConfig;
  void onIntfConfig( IntfId const & intfId ) override { source_.tell( intfId ); }
  using NotifieeConst::onSourcePriority;
  void onSourcePriority( IntfId const & intfId ) override { source_.tell( intfId ); }

  std::string errorOf( IntfId const & intfId ) const {
    auto const * const errors = error_.notifier();
    return errors ? std::string( errors->vlanIntfConfigError( intfId ) ) : "";
  }

 private:
  struct Error final : VlanIntfConfigErrorDir::NotifieeConst {
    explicit Error( Source & of ) : source( of ) {}
    using NotifieeConst::onVlanIntfConfigError;
    void onVlanIntfConfigError( IntfId const & intfId ) override { source.tell( intfId ); }
    Source & source;
  };
  /// The directory of errors may come later than the first error.
  struct Errors final : Coredb::Dir::NotifieeConst {
    explicit Errors( Source & of ) : source( of ) {}
    using NotifieeConst::onEntity;
    void onEntity( Koi::Name const & name ) override {
      if( !notifier() || name != source.name_ || !source.watch_ )
        return;
      source.watch_->error_.notifierIs(
          dynamic_cast< VlanIntfConfigErrorDir * >( notifier()->entity( name ).ptr() ) );
      if( source.watch_->error_.notifier() )
        for( auto const & i : source.watch_->error_.notifier()->vlanIntfConfigError() )
          source.tell( i.key() );
    }
    Source & source;
  };

  Source & source_;
  Errors errors_;
  Error error_;
};

Source::Source( Koi::Activity * activity, std::string const & name, Koi::Name const & sysname,
                std::string const & socket, Say say )
    : activity_( activity ),
      name_( name ),
      say_( std::move( say ) ),
      tree_( Coredb::systemDirectory( sysname ) ),
      returning_( activity, [this] { takePlace(); } ),
      mount_(
          tree_, socket, Coredb::Access::writable,
          [this]( bool isSynchronised ) {
            if( isSynchronised && mine_ )
              returning_.delayIs( 0 );
          },
          activity, quiet() ) {}

Source::~Source() = default;

template< class Condition >
bool Source::runUntil( Condition isSo, Koi::Seconds patience ) {
  bool isLate = false;
  Koi::Timer deadline( activity_, [&] { isLate = true; } );
  deadline.delayIs( patience );
  while( !isSo() && !isLate )
    activity_->runOnce();
  return isSo();
}

bool Source::begin( Koi::Seconds patience ) {
  if( !runUntil( [&] { return mount_.isSynchronised(); }, patience ) )
    return false;
  takePlace();
  if( !mine_ )
    throw std::runtime_error( "nobody makes VLAN interfaces of that system" );
  return true;
}

/// An agent that was started again knows nothing of what was asked for: it is asked for again.
void Source::takePlace() {
  watch_.reset();
  sources_ = placed< Coredb::Dir >( *tree_, vlanSourcePlace );
  list_ = placed< Lumo::DynVlanIntfList >( *tree_, dynVlanIntfListPlace );
  if( !sources_ || !list_ )
    return;
  Koi::Ptr< Koi::Entity > there = sources_->entity( name_ );  // perhaps that of a life before
  if( !there )
    there = sources_->entityIs( name_, mine_ ? mine_ : vlanIntfConfigDirFactory( name_ ) );
  mine_ = dynamic_cast< VlanIntfConfigDir * >( there.ptr() );
  if( !mine_ )
    throw std::runtime_error( std::string( there->fullName().view() ) +
                              " is no source of VLAN interfaces" );
  watch_ = std::make_unique< Watch >( *this );
  for( IntfId const & intfId : Koi::keysOf( mine_->intfConfig() ) )
    tell( intfId );
}

void Source::announce( std::string const & intf, std::string const & rest ) {
  IntfId const intfId = vlanIntfOf( intf );
  std::istringstream words( rest );
  std::string word, value, source( name_.view() );
  std::optional< Koi::U32 > mtu;
  std::string description;
  while( words >> word ) {
    if( word == "mtu" && words >> value )
      mtu = numberOf< Koi::U32 >( value, "mtu" );
    else if( word == "description" && std::getline( words >> std::ws, description ) )
      break;
    else if( word == "cli" )
      source = "cli";
    else
      throw std::runtime_error( "'" + word + "': mtu N, description TEXT or cli was expected" );
  }
  Koi::transaction( [&] {
    auto const config = mine_->newIntfConfig( intfId );
    if( mtu )
      config->mtuIs( *mtu );
    if( !description.empty() )
      config->descriptionIs( Koi::String8( description ) );
    config->sourceIs( Koi::String8( source ) );
    config->dynamicIs( true );
  } );
}

void Source::command( std::string const & line ) {
  std::istringstream words( line );
  std::string what, word, rest;
  if( !( words >> what ) || what.front() == '#' )
    return;
  if( !( words >> word ) )
    throw std::runtime_error( "'" + what + "': something is missing behind it" );
  std::getline( words, rest );
  if( what == "announce" )
    return announce( word, rest );
  if( rest.find_first_not_of( " \t\r" ) != rest.npos )
    throw std::runtime_error( "'" + rest.substr( 1 ) + "' is left over" );
  if( what == "withdraw" )
    mine_->intfConfigDel( vlanIntfOf( word ) );
  else if( what == "priority" )
    mine_->configPriorityIs( priorityOf( word ) );
  else if( what == "wait" )
    activity_->runFor( numberOf< double >( word, "wait" ) );
  else
    throw std::runtime_error( "'" + what + "': announce, withdraw, priority or wait was expected" );
}

bool Source::hasHeardOfAll() const {
  for( auto const & i : mine_->intfConfig() )
    if( auto const said = said_.find( i.key() ); said == said_.end() || said->second.empty() )
      return false;
  return true;
}

void Source::end( Koi::Seconds patience ) {
  runUntil( [&] { return hasHeardOfAll() || !mount_.isSynchronised(); }, patience );
  watch_.reset();
  if( !sources_ || !mount_.isSynchronised() )
    return;
  sources_->entityDel( name_ );
  runUntil( [&] { return mount_.isAcknowledged() || !mount_.isSynchronised(); }, patience );
}

std::string Source::verdictOn( IntfId const & intfId ) const {
  std::string const error = watch_ ? watch_->errorOf( intfId ) : "";
  auto const pair = list_->sourcePriority( intfId );
  if( !error.empty() )
    return error;
  if( !mine_->intfConfig( intfId ) )
    return "";
  if( pair.source() != Koi::String8( name_ ) )
    return "asked for";
  return list_->intfConfig( intfId ) ? "published" : "claimed, not published";
}

void Source::tell( IntfId const & intfId ) {
  std::string const verdict = verdictOn( intfId );
  auto & said = said_[intfId];
  if( verdict == said )
    return;
  said = verdict;
  say_( std::string( intfId.stringValue() ) + ": " + ( verdict.empty() ? "withdrawn" : verdict ) );
}

}  // namespace VlanInterfaces
