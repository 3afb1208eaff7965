// MacWatch.cpp: `lumo watch mac`: the changes of the MAC address table, as they come, with what was
// before.
#include <algorithm>
#include <filesystem>
#include <optional>

#include <koi/Text.h>
#include <koi/UtcText.h>
#include <quill/TableType.h>

#include "Following.h"
#include "MacSubcommand.h"
#include "TableFacts.h"

namespace Lumo {
namespace {

using Host = Quill::Bridging::QuillFdbStatus;
using HostRecord = Quill::Record< Host >;

class MacWatch final : public MacSubcommand {
 public:
  explicit MacWatch( CLI::App & watch )
      : MacSubcommand( watch, "shows MAC addresses that come, move, change and go" ) {
    limits_.addTo( command() );
    command().add_flag( "--json", isJson_, "print one JSON object a line" );
  }

  Status run( Output & output ) const override;

 private:
  class Run;

  Following::Limits limits_;
  bool isJson_ = false;
};

class MacWatch::Run {
 public:
  Run( MacWatch const & options, Output & output )
      : options_( options ),
        following_( options.root(), options.table(), options.limits_, output ),
        wasThere_( following_.isThere() ),
        columns_( columns() ),
        follower_(
            Quill::tableType( Host::koiName )
                ->follower( following_.activity(), options.root(), options.table(),
                            { [this] { ready(); }, [this]( U32 const * key ) { told( key ); },
                              [this]( bool is ) { following_.attached( is ); } } ) ) {
    if( !wasThere_ )
      complain( options.table() + ": there is no such table below " + options.root().path() +
                " yet" );
  }

  Status status() {
    following_.run();
    return succeeded;
  }

 private:
  static constexpr std::size_t numOwnColumns = 2;

  static std::vector< Column > columns() {
    std::vector< Column > all{ { "time" }, { "change" } };
    auto const more = MacTexts::columns();
    all.insert( all.end(), more.begin(), more.end() );
    return all;
  }

  void ready() {
    std::vector< U32 > value( HostRecord::valueSize / 4 );
    U32 place = 0;
    while( follower_->next( place, value.data() ) ) {
      MacEntry const entry( HostRecord::value( value.data() ) );
      if( !options_.filter().admitsPlace( entry.place ) )
        continue;
      known_.emplace( entry.place, entry );
      texts_.fit( columns_, entry, numOwnColumns );
    }
    // Room for what is likely to come.
    columns_.fit( 0, timeText().size() );
    columns_.fit( 1, std::string_view( "changed" ).size() );
    texts_.fit( columns_, MacEntry(), numOwnColumns );
    columns_.fit( numOwnColumns + MacTexts::port, std::string_view( "eth48 -> eth49" ).size() );
    if( !options_.isJson_ )
      following_.write( columns_.headings() );
    // Who waited for the table is told of all that came with it.
    if( !wasThere_ )
      showAll();
  }
  void showAll() {
    std::vector< MacEntry > all;
    for( auto const & [place, entry] : known_ )
      if( options_.filter().admits( entry ) )
        all.push_back( entry );
    std::ranges::sort( all, {}, &MacEntry::place );
    for( MacEntry const & entry : all )
      if( !show( "added", &entry, nullptr ) )
        return;
  }
  void told( U32 const * key ) {
    U64 const place = MacEntry::placeOf( HostRecord::key( key ) );
    if( !options_.filter().admitsPlace( place ) )
      return;
    std::vector< U32 > value( HostRecord::valueSize / 4 );
    std::optional< MacEntry > now, was;
    if( follower_->lookup( key, value.data() ) )
      now.emplace( HostRecord::value( value.data() ) );
    if( auto const at = known_.find( place ); at != known_.end() )
      was = at->second;
    if( now )
      known_[place] = *now;
    else
      known_.erase( place );
    bool const isAsked =
        ( now && options_.filter().admits( *now ) ) || ( was && options_.filter().admits( *was ) );
    if( !isAsked || now == was )
      return;
    show( !was                     ? "added"
          : !now                   ? "gone"
          : now->intf != was->intf ? "moved"
                                   : "changed",
          now ? &*now : nullptr, was ? &*was : nullptr );
  }

  bool show( char const * change, MacEntry const * now, MacEntry const * was ) {
    return following_.show( options_.isJson_ ? json( change, now, was )
                                             : columns_.line( row( change, now, was ) ) );
  }
  std::string json( char const * change, MacEntry const * now, MacEntry const * was ) {
    std::string text = "{\"schema\": \"lumo.mac-change/1\", \"time\": ";
    Koi::appendText( text, Koi::secondsSince1970() );
    ( ( text += ", \"change\": \"" ) += change ) += '"';
    if( now )
      texts_.appendJson( text += ", \"entry\": ", *now );
    if( was )
      texts_.appendJson( text += ", \"was\": ", *was );
    return text + "}\n";
  }
  /// What is different is shown as it was and as it is.
  Row row( char const * change, MacEntry const * now, MacEntry const * was ) {
    Row row{ timeText(), change };
    auto const cells = texts_.cells( now ? *now : *was );
    row.insert( row.end(), cells.begin(), cells.end() );
    if( now && was ) {
      auto const before = texts_.cells( *was );
      for( std::size_t i = MacTexts::type; i <= MacTexts::port; ++i )
        if( auto & cell = row[numOwnColumns + i]; cell != before[i] )
          cell = std::string( before[i] ) + " -> " + cell;
    }
    return row;
  }

  static std::string timeText() { return Koi::utcText( Koi::secondsSince1970() ); }

  MacWatch const & options_;
  Following following_;
  bool const wasThere_;
  Columns columns_;
  MacTexts texts_;
  std::unordered_map< U64, MacEntry > known_;  // by place: the filter admits that
  std::unique_ptr< Quill::AnyFollower > const follower_;
};

Status MacWatch::run( Output & output ) const {
  // What is not there yet may come, and the root with it.
  std::error_code why;
  if( std::filesystem::exists( root().path(), why ) || why )
    try {
      requireMacTable();
    } catch( Failure const & e ) {
      if( e.status != absent )
        throw;
    }
  return onTable( table(), [&] { return Run( *this, output ).status(); } );
}

}  // namespace

std::unique_ptr< Subcommand > watchMac( CLI::App & watch ) {
  return std::make_unique< MacWatch >( watch );
}

}  // namespace Lumo
