// VlanDynIntfSmTest.cpp: sources of VLAN interfaces that contend: rules one by one, at random
// beside a plain model, and what nobody may do.
#include <gtest/gtest.h>

#include <Lumo/LumoIntfId.h>
#include <Lumo/VlanDynIntfSm.h>
#include <coredb/Tree.h>
#include <koi/KeysOf.h>
#include <koi/Transaction.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>

#include "PlainDynVlan.h"
#include "support/Refusal.h"

using namespace Interface;
using namespace Lumo;
using Tests::PlainDynVlan;
using Wirex::IntfId;

namespace {

constexpr char rejected[] = "Rejected: Higher priority config found";

IntfId vlan( int number ) { return IntfId( Koi::String8( "vlan" + std::to_string( number ) ) ); }
Koi::Ptr< Coredb::Dir > newDir( char const * name ) {
  return Coredb::dirFactory( Koi::Name( name ) );
}

struct DynVlan : testing::Test {
  ~DynVlan() override { sm->koiDoZombieReactors( true ); }

  Koi::Ptr< VlanIntfConfigDir > sourceIs( std::string const & name,
                                          VlanIntfConfigPriority priority = configPriorityLow ) {
    auto const source = vlanIntfConfigDirFactory( Koi::Name( name ) );
    source->configPriorityIs( priority );
    sources->entityIs( Koi::Name( name ), source );
    return source;
  }
  static Koi::Ptr< VlanIntfConfig > announce( VlanIntfConfigDir & source, int number,
                                              bool dynamic = true ) {
    // As one who fills it in before anybody sees it.
    Koi::Ptr< VlanIntfConfig > config;
    Koi::transaction( [&] {
      config = source.newIntfConfig( vlan( number ) );
      config->dynamicIs( dynamic );
    } );
    return config;
  }
  std::string winner( int number ) const {
    return std::string( list->sourcePriority( vlan( number ) ).source() );
  }
  std::string error( std::string const & source, int number ) const {
    auto const errors =
        dynamic_cast< VlanIntfConfigErrorDir * >( errorDir->entity( Koi::Name( source ) ).ptr() );
    return errors ? std::string( errors->vlanIntfConfigError( vlan( number ) ) ) : "";
  }

  Koi::Ptr< Coredb::Dir > const sources = newDir( "sources" ), errorDir = newDir( "errors" );
  Koi::Ptr< DynVlanIntfList > const list = dynVlanIntfListFactory( Koi::Name( "list" ) );
  Koi::Ptr< DynVlanIntfReactor > const sm =
      dynVlanIntfReactorFactory( sources, errorDir, list, false );
};

TEST_F( DynVlan, ofOnePriorityGoesToTheSmallerName ) {
  auto const zulu = sourceIs( "zulu" ), alpha = sourceIs( "alpha" );
  auto const late = announce( *zulu, 7 ), early = announce( *alpha, 7 );
  EXPECT_EQ( list->intfConfig( vlan( 7 ) ), early );
  EXPECT_EQ( error( "zulu", 7 ), rejected );
  EXPECT_EQ( error( "alpha", 7 ), "" );
  announce( *zulu, 7, true );
  EXPECT_EQ( winner( 7 ), "alpha" );
  alpha->intfConfigDel( vlan( 7 ) );  // the next one has it at once
  EXPECT_EQ( list->intfConfig( vlan( 7 ) ), late );
  EXPECT_EQ( error( "zulu", 7 ), "" );
  zulu->intfConfigDel( vlan( 7 ) );
  EXPECT_TRUE( list->sourcePriority().empty() );
  EXPECT_TRUE( list->intfConfig().empty() );
  EXPECT_TRUE( sm->preIntfList().empty() );
}

TEST_F( DynVlan, goesToTheHigherPriorityWhenItComes ) {
  auto const low = sourceIs( "a" ), high = sourceIs( "z", configPriorityHigh );
  announce( *low, 7 );
  auto const config = announce( *high, 7 );
  EXPECT_EQ( list->intfConfig( vlan( 7 ) ), config );
  EXPECT_EQ( list->sourcePriority( vlan( 7 ) ), SourcePriorityPair( "z", 2 ) );
  EXPECT_EQ( error( "a", 7 ), rejected );
  low->configPriorityIs( configPriorityHigh );
  EXPECT_EQ( list->sourcePriority( vlan( 7 ) ), SourcePriorityPair( "a", 2 ) );
  EXPECT_EQ( error( "a", 7 ), "" );
  EXPECT_EQ( error( "z", 7 ), rejected );
  low->configPriorityIs( configPriorityMedium );
  EXPECT_EQ( winner( 7 ), "z" );
  EXPECT_EQ( error( "z", 7 ), "" );
  EXPECT_EQ( error( "a", 7 ), rejected );
  sources->entityDel( Koi::Name( "z" ) );
  EXPECT_EQ( list->sourcePriority( vlan( 7 ) ), SourcePriorityPair( "a", 1 ) );
  EXPECT_EQ( error( "a", 7 ), "" );
}

TEST_F( DynVlan, thatIsNotPublishedGivesWayToAnybody ) {
  auto const high = sourceIs( "high", configPriorityHigh ), low = sourceIs( "low" );
  auto const config = announce( *high, 7, false );
  EXPECT_EQ( sm->preIntfList( vlan( 7 ) ), config );
  EXPECT_FALSE( list->intfConfig( vlan( 7 ) ) );
  auto const other = announce( *low, 7, false );
  EXPECT_EQ( winner( 7 ), "low" );
  EXPECT_EQ( error( "high", 7 ), "" );
  config->dynamicIs( true );  // of one that is not claimed any more
  EXPECT_FALSE( list->intfConfig( vlan( 7 ) ) );
  other->sourceIs( "cli" );
  other->dynamicIs( true );
  EXPECT_FALSE( list->intfConfig( vlan( 7 ) ) );
  other->sourceIs( "mlag" );
  EXPECT_EQ( list->intfConfig( vlan( 7 ) ), other );
}

TEST_F( DynVlan, inStandbyTellsNobodyOfErrors ) {
  auto const a = sourceIs( "a" ), b = sourceIs( "b" );
  sm->standbyModeIs( true );
  announce( *a, 7 );
  announce( *b, 7 );
  EXPECT_EQ( error( "b", 7 ), "" );
  sm->standbyModeIs( false );  // not inside the bridging agent
  EXPECT_EQ( error( "b", 7 ), "" );
  sm->launchedByLumoIs( true );
  sm->standbyModeIs( true );
  sm->standbyModeIs( false );
  EXPECT_EQ( error( "b", 7 ), rejected );
  sm->standbyModeIs( true );
  b->intfConfigDel( vlan( 7 ) );
  EXPECT_EQ( error( "b", 7 ), rejected );
  sm->standbyModeIs( false );
  EXPECT_EQ( error( "b", 7 ), "" );
}

TEST_F( DynVlan, thatCannotBeAppliedIsToldToItsSource ) {
  auto const a = sourceIs( "a" ), b = sourceIs( "b" );
  announce( *a, 7 );
  announce( *b, 7 );
  list->intfConfigErrorIs( vlan( 7 ), true );
  EXPECT_EQ( error( "a", 7 ), rejected );
  a->intfConfigDel( vlan( 7 ) );  // the flag is of the interface, whoever has it
  EXPECT_EQ( error( "a", 7 ), "" );
  EXPECT_EQ( error( "b", 7 ), rejected );
  list->intfConfigErrorIs( vlan( 7 ), false );
  EXPECT_EQ( error( "b", 7 ), "" );
  list->intfConfigErrorIs( vlan( 7 ), true );
  b->intfConfigDel( vlan( 7 ) );
  EXPECT_TRUE( list->intfConfigError().empty() );
  EXPECT_EQ( error( "b", 7 ), "" );
}

TEST_F( DynVlan, comesBackWithItsDirectoryAndItsList ) {
  announce( *sourceIs( "a" ), 7 );
  auto const others = newDir( "others" );
  auto const b = vlanIntfConfigDirFactory( Koi::Name( "b" ) );
  auto const config = announce( *b, 8 );
  others->entityIs( Koi::Name( "b" ), b );
  others->entityIs( Koi::Name( "stranger" ), newDir( "" ) );  // what is no source is no matter
  sm->dynVlanIntfDirIs( others );
  EXPECT_EQ( list->intfConfig().size(), 1u );
  EXPECT_EQ( list->intfConfig( vlan( 8 ) ), config );
  EXPECT_EQ( list->sourcePriority().size(), 1u );
  auto const other = dynVlanIntfListFactory( Koi::Name( "other" ) );
  sm->dynVlanIntfListIs( other );
  EXPECT_EQ( other->intfConfig( vlan( 8 ) ), config );
  sm->dynVlanIntfDirIs( sources );
  EXPECT_EQ( Koi::keysOf( other->intfConfig() ), std::vector{ vlan( 7 ) } );
  sm->dynVlanIntfDirIs( nullptr );
  EXPECT_TRUE( other->sourcePriority().empty() );
}

TEST_F( DynVlan, leavesNothingBehind ) {
  announce( *sourceIs( "a" ), 7 );
  announce( *sourceIs( "b" ), 8 );
  sm->koiDoZombieReactors( true );
  EXPECT_TRUE( list->intfConfig().empty() );
  EXPECT_TRUE( list->sourcePriority().empty() );
  EXPECT_FALSE( sm->initialized() );
}

TEST( DynVlanIntfReactor, thatIsLetGoTakesBackWhatItPublished ) {
  auto const sources = newDir( "sources" ), errors = newDir( "errors" );
  auto const list = dynVlanIntfListFactory( Koi::Name( "list" ) );
  auto const a = vlanIntfConfigDirFactory( Koi::Name( "a" ) );
  a->newIntfConfig( vlan( 7 ) )->dynamicIs( true );
  sources->entityIs( Koi::Name( "a" ), a );
  auto sm = dynVlanIntfReactorFactory( sources, errors, list, false );
  EXPECT_EQ( list->intfConfig().size(), 1u );
  sm = nullptr;
  EXPECT_TRUE( list->intfConfig().empty() );
  EXPECT_TRUE( list->sourcePriority().empty() );
}

/// One who applies the list, and acts at once on what it is told.
struct Consumer : DynVlanIntfList::Notifiee {
  using NotifieeConst::onIntfConfig;
  void onIntfConfig( IntfId const & intfId ) override {
    ++numTold;
    if( notifier()->intfConfig( intfId ) )
      onPublished( intfId );
  }
  std::function< void( IntfId const & ) > onPublished = []( auto const & ) {};
  int numTold = 0;
};

TEST_F( DynVlan, mayBeFlaggedOrWithdrawnWhileItIsPublished ) {
  Consumer consumer;
  consumer.notifierIs( list );
  consumer.onPublished = [&]( auto const & id ) { list->intfConfigErrorIs( id, true ); };
  auto const early = vlanIntfConfigDirFactory( Koi::Name( "early" ) );
  announce( *early, 7 );
  sources->entityIs( Koi::Name( "early" ), early );  // its reactor is about to be made
  EXPECT_EQ( error( "early", 7 ), rejected );
  consumer.onPublished = [&]( auto const & id ) { list->intfConfigErrorDel( id ); };
  early->configPriorityIs( configPriorityHigh );
  announce( *sourceIs( "late" ), 8 );
  consumer.onPublished = [&]( auto const & ) { sources->entityDel( Koi::Name( "last" ) ); };
  auto const last = vlanIntfConfigDirFactory( Koi::Name( "last" ) );
  announce( *last, 9 );
  announce( *last, 10 );
  sources->entityIs( Koi::Name( "last" ), last );
  EXPECT_EQ( winner( 9 ) + winner( 10 ), "" );
  EXPECT_EQ( sm->dynVlanIntfConfigSm().size(), 2u );
  EXPECT_EQ( list->intfConfig().size(), 2u );
}

/// Sources that are there before the reactor is.
struct DynVlanAtStart : testing::Test {
  DynVlanAtStart() {
    for( char const * name : { "a", "b" } ) {
      auto const source = vlanIntfConfigDirFactory( Koi::Name( name ) );
      for( int number : { 7, 8, 9 } )
        DynVlan::announce( *source, number );
      sources->entityIs( Koi::Name( name ), source );
    }
    consumer.notifierIs( list );
  }
  ~DynVlanAtStart() override {
    if( sm )
      sm->koiDoZombieReactors( true );
  }
  void start() { sm = dynVlanIntfReactorFactory( sources, errors, list, false ); }
  std::string error( char const * source, int number ) const {
    auto const of =
        dynamic_cast< VlanIntfConfigErrorDir * >( errors->entity( Koi::Name( source ) ).ptr() );
    return of ? std::string( of->vlanIntfConfigError( vlan( number ) ) ) : "";
  }

  Koi::Ptr< Coredb::Dir > const sources = newDir( "sources" ), errors = newDir( "errors" );
  Koi::Ptr< DynVlanIntfList > const list = dynVlanIntfListFactory( Koi::Name( "list" ) );
  Koi::Ptr< DynVlanIntfReactor > sm;
  Consumer consumer;
};

TEST_F( DynVlanAtStart, isPublishedOnce ) {
  start();
  EXPECT_EQ( list->intfConfig().size(), 3u );
  EXPECT_EQ( consumer.numTold, 3 );  // each that it is there
  EXPECT_EQ( error( "b", 7 ), rejected );
}

TEST_F( DynVlanAtStart, isFlaggedWhileItIsPublished ) {
  consumer.onPublished = [&]( auto const & id ) {
    list->intfConfigErrorIs( id, true );
    if( id != vlan( 7 ) )
      list->intfConfigErrorDel( id );
  };
  start();
  EXPECT_EQ( consumer.numTold, 3 );
  EXPECT_EQ( error( "a", 7 ), rejected );
  EXPECT_EQ( error( "a", 8 ), "" );
  list->intfConfigErrorDel( vlan( 7 ) );
  EXPECT_EQ( error( "a", 7 ), "" );
}

TEST_F( DynVlanAtStart, losesItsSourceWhileItIsPublished ) {
  consumer.onPublished = [&]( auto const & ) { sources->entityDel( Koi::Name( "a" ) ); };
  start();
  EXPECT_EQ( list->intfConfig().size(), 3u );
  for( int number : { 7, 8, 9 } ) {
    EXPECT_EQ( list->sourcePriority( vlan( number ) ), SourcePriorityPair( "b", 0 ) );
    EXPECT_EQ( error( "b", number ), "" );
  }
}

TEST_F( DynVlan, thatIsAskedForAsItsSourceLeavesGoesWithIt ) {
  auto const a = sourceIs( "a" );
  Koi::transaction( [&] {
    sources->entityDel( Koi::Name( "a" ) );
    a->newIntfConfig( vlan( 7 ) )->dynamicIs( true );
  } );
  EXPECT_TRUE( list->sourcePriority().empty() );
  EXPECT_TRUE( sm->dynVlanIntfConfigSm().empty() );
}

TEST_F( DynVlan, refusesNull ) {
  EXPECT_EQ(
      refusal( [&] { list->intfConfigIs( vlan( 7 ), nullptr ); } ),
      "null _intfConfig parameter to mutator for Lumo::DynVlanIntfList::intfConfig not allowed" );
  EXPECT_EQ( refusal( [&] { sm->preIntfListIs( vlan( 7 ), nullptr ); } ),
             "null _preIntfList parameter to mutator for Lumo::DynVlanIntfReactor::preIntfList not "
             "allowed" );
  EXPECT_EQ( refusal( [&] { sm->preIntfListSmIs( vlan( 7 ), nullptr ); } ),
             "null _preIntfListSm parameter to mutator for Lumo::DynVlanIntfReactor::preIntfListSm "
             "not allowed" );
}

TEST_F( DynVlan, assertsThatNobodyElseWritesItsList ) {
  auto const a = sourceIs( "a" );
  auto const config = announce( *a, 7 ), other = announce( *a, 8, false );
  EXPECT_DEATH( list->intfConfigErrorIs( vlan( 9 ), true ), "assertion failed: !!sourcePri " );
  EXPECT_DEATH( dynVlanIntfReactorFactory( sources, errorDir, nullptr, false ),
                "assertion failed: dynVlanIntfList\\(\\) " );
  EXPECT_DEATH( dynVlanIntfConfigSmFactory( SourcePriorityPair( "a", 0 ), a, nullptr ),
                "assertion failed: parent\\(\\) " );
  list->sourcePriorityDel( vlan( 8 ) );
  EXPECT_DEATH( other->dynamicIs( true ),
                "assertion failed: !!dynVlanIntfReactor\\(\\)->dynVlanIntfList\\(\\)->"
                "sourcePriority\\( intfId\\(\\) \\) " );
  EXPECT_DEATH(
      sm->dynVlanIntfConfigSm( SourcePriorityPair( "a", 0 ) )->koiDoZombieReactors( true ),
      "assertion failed: !!parent\\(\\)->dynVlanIntfList\\(\\)->sourcePriority\\( "
      "i.key\\(\\) \\) " );
  list->sourcePriorityDel( vlan( 7 ) );
  EXPECT_DEATH( a->intfConfigNotify( vlan( 7 ) ), "assertion failed: !!prevPri " );
  list->sourcePriorityIs( vlan( 7 ), SourcePriorityPair( "stranger", 1 ) );
  EXPECT_DEATH( list->intfConfigErrorIs( vlan( 7 ), true ),
                "assertion failed: dynVlanIntfConfigSm\\( sourcePri \\) " );
  list->sourcePriorityIs( vlan( 7 ), SourcePriorityPair( "a", 0 ) );
  list->sourcePriorityIs( vlan( 8 ), SourcePriorityPair( "a", 0 ) );
}

// ---- at random, beside the plain model

class Game {
 public:
  Game( DynVlan & dynVlan, unsigned seed, int numSources )
      : dynVlan_( dynVlan ), random_( seed ), numSources_( numSources ) {}

  void step() {
    std::string const name( 1, static_cast< char >( 'a' + number( numSources_ ) ) );
    int const id = 1 + number( numIntfs );
    Koi::Ptr< VlanIntfConfigDir > const dir =
        dynamic_cast< VlanIntfConfigDir * >( dynVlan_.sources->entity( Koi::Name( name ) ).ptr() );
    int const what = number( 100 );
    if( what < 4 )
      return changeStandby();
    if( what < 12 )
      return flag( id );
    if( !dir )
      return addSource( name );
    if( what < 15 )
      return removeSource( name );
    if( what < 25 )
      return changePriority( name, *dir );
    changeConfig( name, *dir, id, what );
  }

  /// What differs; empty: nothing.
  std::string difference() const {
    std::string text;
    auto const claim = [&]( bool isSo, std::string const & what ) {
      if( !isSo )
        text += what + "; ";
    };
    auto & list = *dynVlan_.list;
    claim( list.sourcePriority().size() == plain_.winners.size(), "number of winners" );
    claim( list.intfConfig().size() == plain_.published.size(), "number of published" );
    for( int id = 1; id <= numIntfs; ++id ) {
      std::string const of = " of vlan" + std::to_string( id );
      auto const winner = plain_.winners.find( id );
      auto const pair = list.sourcePriority( vlan( id ) );
      claim( winner == plain_.winners.end()
                 ? !pair
                 : pair.source() == Koi::String8( winner->second.source ) &&
                       pair.priority() == winner->second.priority,
             "winner" + of );
      auto const published = plain_.published.find( id );
      auto const config = list.intfConfig( vlan( id ) );
      claim( published == plain_.published.end()
                 ? !config
                 : config && serialOf( *config ) == published->second,
             "published" + of );
      claim( list.intfConfigError( vlan( id ) ) == ( plain_.flags.count( id ) != 0 ), "flag" + of );
      for( int s = 0; s < numSources_; ++s ) {
        std::string const name( 1, static_cast< char >( 'a' + s ) );
        auto const errors = plain_.errors.find( name );
        bool const isRejected = errors != plain_.errors.end() && errors->second.count( id );
        claim( dynVlan_.error( name, id ) == ( isRejected ? rejected : "" ),
               "error of " + name + of );
      }
    }
    return text;
  }

 private:
  static constexpr int numIntfs = 5;

  int number( int below ) {
    return static_cast< int >( random_() % static_cast< unsigned >( below ) );
  }
  VlanIntfConfigPriority priority() { return static_cast< VlanIntfConfigPriority >( number( 3 ) ); }
  std::string sourceText() { return number( 4 ) == 0 ? "cli" : number( 2 ) ? "mlag" : ""; }
  static int serialOf( VlanIntfConfig const & config ) {
    return static_cast< int >( config.mtu() );
  }

  void changeStandby() {
    if( number( 3 ) == 0 ) {
      plain_.isLaunchedByLumo = !plain_.isLaunchedByLumo;
      return dynVlan_.sm->launchedByLumoIs( plain_.isLaunchedByLumo );
    }
    plain_.standbyIs( !plain_.standby );
    dynVlan_.sm->standbyModeIs( plain_.standby );
  }
  void flag( int id ) {
    if( !plain_.winners.count( id ) )  // which nobody may
      return;
    bool const on = !plain_.flags.count( id );
    plain_.flagIs( id, on );
    if( on )
      dynVlan_.list->intfConfigErrorIs( vlan( id ), true );
    else
      dynVlan_.list->intfConfigErrorDel( vlan( id ) );
  }
  void addSource( std::string const & name ) {
    auto const added = priority();
    auto const dir = vlanIntfConfigDirFactory( Koi::Name( name ) );
    dir->configPriorityIs( added );
    for( int i = number( 3 ); i != 0; --i ) {  // it may come with something
      int const id = 1 + number( numIntfs );
      plain_.sources[name].configs[id] = filled( *dir->newIntfConfig( vlan( id ) ) );
    }
    plain_.sourceAdded( name, added );
    dynVlan_.sources->entityIs( Koi::Name( name ), dir );
  }
  void removeSource( std::string const & name ) {
    plain_.sourceRemoved( name );
    dynVlan_.sources->entityDel( Koi::Name( name ) );
  }
  void changePriority( std::string const & name, VlanIntfConfigDir & dir ) {
    auto const now = priority();
    plain_.priorityIs( name, now );
    dir.configPriorityIs( now );
  }
  void changeConfig( std::string const & name, VlanIntfConfigDir & dir, int id, int what ) {
    auto const config = dir.intfConfig( vlan( id ) );
    if( !config ) {
      PlainDynVlan::Config plain;
      Koi::transaction( [&] { plain = filled( *dir.newIntfConfig( vlan( id ) ) ); } );
      return plain_.announced( name, id, plain );
    }
    if( what < 45 ) {
      plain_.withdrawn( name, id );
      dir.intfConfigDel( vlan( id ) );
    } else if( what < 55 ) {
      plain_.decideAgain( name, id );
      dir.intfConfigNotify( vlan( id ) );
    } else if( what < 62 ) {  // another one in its place
      PlainDynVlan::Config plain;
      Koi::transaction( [&] {
        dir.intfConfigDel( vlan( id ) );
        plain = filled( *dir.newIntfConfig( vlan( id ) ) );
      } );
      plain_.announced( name, id, plain );
    } else if( what < 82 ) {
      config->dynamicIs( !config->dynamic() );
      plain_.configIs( name, id, config->dynamic(), std::string( config->source() ) );
    } else {
      config->sourceIs( Koi::String8( sourceText() ) );
      plain_.configIs( name, id, config->dynamic(), std::string( config->source() ) );
    }
  }
  /// Gives a new configuration its contents; the MTU is its number.
  PlainDynVlan::Config filled( VlanIntfConfig & config ) {
    PlainDynVlan::Config const plain{ ++numConfigs_, number( 3 ) != 0, sourceText() };
    config.mtuIs( static_cast< Koi::U32 >( plain.serial ) );
    config.dynamicIs( plain.dynamic );
    config.sourceIs( Koi::String8( plain.source ) );
    return plain;
  }

  DynVlan & dynVlan_;
  std::mt19937 random_;
  int const numSources_;
  int numConfigs_ = 0;
  PlainDynVlan plain_;
};

class DynVlanAtRandom : public DynVlan, public testing::WithParamInterface< int > {};

TEST_P( DynVlanAtRandom, isWhatThePlainModelSays ) {
  char const * const given = std::getenv( "LUMO_SEED" );
  unsigned const seed =
      given ? static_cast< unsigned >( std::strtoul( given, nullptr, 0 ) ) : std::random_device()();
  std::cout << "LUMO_SEED=" << seed << "\n";  // gives the same steps again
  Game game( *this, seed, GetParam() );
  for( int i = 0; i < 100000; ++i ) {
    game.step();
    ASSERT_EQ( game.difference(), "" ) << "after step " << i;
  }
}

INSTANTIATE_TEST_SUITE_P( Sources, DynVlanAtRandom, testing::Values( 2, 3, 5, 8 ),
                          testing::PrintToStringParamName() );

}  // namespace
