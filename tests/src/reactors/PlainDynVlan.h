// PlainDynVlan.h: what VlanDynIntfReactorTest compares with: which source of VLAN interfaces
// prevails, by a sorted list and a loop.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Tests {

/// Plays the same game with numbers instead of entities. A configuration is the number of the
/// entity.
class PlainDynVlan {
 public:
  struct Config {
    int serial = 0;
    bool dynamic = false;
    std::string source;
  };
  struct Pair {
    std::string source;
    int priority = 0;
    bool operator==( Pair const & ) const = default;
    bool prevailsOver( Pair const & other ) const {
      return priority > other.priority || ( priority == other.priority && source < other.source );
    }
  };
  struct Source {
    int priority = 0;
    std::map< int, Config > configs;
  };

  std::map< std::string, Source > sources;
  std::map< int, Pair > winners;
  std::map< int, int > published;  // serials
  std::set< int > flags;
  std::map< std::string, std::set< int > > errors;
  bool standby = false;
  bool isLaunchedByLumo = false;

  void sourceAdded( std::string const & name, int priority ) {
    sources[name].priority = priority;
    look( pairOf( name ) );
  }
  void sourceRemoved( std::string const & name ) {
    leave( pairOf( name ), {} );
    sources.erase( name );
  }
  void priorityIs( std::string const & name, int priority ) {
    Pair const old = pairOf( name );
    if( old.priority == priority )
      return;
    sources[name].priority = priority;
    look( pairOf( name ) );
    leave( old, pairOf( name ) );
  }
  void announced( std::string const & name, int id, Config const & config ) {
    sources[name].configs[id] = config;
    decide( pairOf( name ), id );
  }
  void withdrawn( std::string const & name, int id ) {
    sources[name].configs.erase( id );
    decide( pairOf( name ), id );
  }
  void decideAgain( std::string const & name, int id ) { decide( pairOf( name ), id ); }
  void configIs( std::string const & name, int id, bool dynamic, std::string const & source ) {
    Config & config = sources[name].configs[id];
    config.dynamic = dynamic;
    config.source = source;
    if( claimed_.count( id ) && claimed_[id].serial == config.serial ) {
      claimed_[id] = config;
      publish( id );
    }
  }
  void flagIs( int id, bool on ) {
    on ? void( flags.insert( id ) ) : void( flags.erase( id ) );
    errorIs( winners[id].source, id, on );
  }
  void standbyIs( bool on ) {
    bool const ends = standby && !on;
    standby = on;
    if( ends && isLaunchedByLumo )
      for( auto const & pair : sorted() )
        look( pair );
  }

 private:
  Pair pairOf( std::string const & name ) const { return { name, sources.at( name ).priority }; }

  std::vector< Pair > sorted() const {
    std::vector< Pair > pairs;
    for( auto const & [name, source] : sources )
      pairs.push_back( { name, source.priority } );
    std::sort( pairs.begin(), pairs.end(),
               []( auto const & a, auto const & b ) { return a.prevailsOver( b ); } );
    return pairs;
  }

  void errorIs( std::string const & name, int id, bool on ) {
    if( standby )
      return;
    on ? void( errors[name].insert( id ) ) : void( errors[name].erase( id ) );
  }

  void publish( int id ) {
    Config const & config = claimed_[id];
    if( config.dynamic && config.source != "cli" )
      published[id] = config.serial;
  }
  void claim( Pair const & pair, int id, Config const & config ) {
    winners[id] = pair;
    claimed_[id] = config;
    publish( id );
  }
  void unclaim( int id ) {
    winners.erase( id );
    claimed_.erase( id );
    published.erase( id );
  }

  void look( Pair const & my ) {
    auto const & configs = sources[my.source].configs;
    for( int const id : std::set< int >( errors[my.source] ) )
      if( !configs.count( id ) )
        errorIs( my.source, id, false );
    for( auto const & [id, config] : std::map< int, Config >( configs ) )
      decide( my, id );
  }

  void decide( Pair const & my, int id ) {
    auto const & configs = sources[my.source].configs;
    if( auto const at = configs.find( id ); at != configs.end() ) {
      if( published.count( id ) ) {
        Pair const before = winners[id];
        if( before.prevailsOver( my ) )
          return errorIs( my.source, id, true );
        unclaim( id );
        errorIs( my.source, id, flags.count( id ) );
        if( before.source != my.source )
          errorIs( before.source, id, true );
      }
      claim( my, id, at->second );
    } else {
      if( winners.count( id ) && winners[id] == my )
        handOver( my, {}, id );
      errorIs( my.source, id, false );
    }
  }

  /// The old pair of a source goes; where the source only changed its priority, `now` is the new.
  void leave( Pair const & my, Pair const & now ) {
    for( auto const & [id, config] : std::map< int, Config >( sources[my.source].configs ) )
      if( winners.count( id ) && winners[id] == my )
        handOver( my, now, id );
  }

  void handOver( Pair const & skip, Pair const & now, int id ) {
    bool const flag = flags.count( id );
    unclaim( id );
    for( auto const & pair : sorted() ) {
      if( pair.source == skip.source && !( pair == now ) )
        continue;
      auto const & configs = sources[pair.source].configs;
      if( auto const at = configs.find( id ); at != configs.end() ) {
        errorIs( pair.source, id, flag );
        return claim( pair, id, at->second );
      }
    }
    if( flags.erase( id ) )
      errorIs( skip.source, id, false );  // nobody is at fault any more
  }

  std::map< int, Config > claimed_;
};

}  // namespace Tests
