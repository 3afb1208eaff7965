// TableFollow.cpp: `lumo table follow`: the changes of a table, as they come.
#include <optional>

#include <koi/FieldOf.h>
#include <koi/RecordOps.h>
#include <koijson/ValueToJson.h>

#include "EntryTexts.h"
#include "Following.h"
#include "Subcommands.h"
#include "TableFacts.h"

namespace Lumo {
namespace {

using Koi::U32;
using Koi::U64;

class TableFollow final : public Subcommand {
 public:
  explicit TableFollow( CLI::App & table )
      : Subcommand( table, "follow", "shows the changes of a table until it is interrupted" ) {
    command()
        .add_option( "TABLE", name_, "a table, as counters/vlanIntf" )
        ->required()
        ->type_name( "" );
    command().add_flag( "--all", isAll_, "begin with the entries that are there" );
    limits_.addTo( command() );
    command().add_flag( "--json", isJson_, "print one JSON object a line" );
  }

  Status run( Output & output ) const override;

 private:
  class Run;

  std::string name_;
  Following::Limits limits_;
  bool isAll_ = false;
  bool isJson_ = false;
};

class TableFollow::Run {
 public:
  Run( TableFollow const & options, Output & output )
      : options_( options ),
        following_( options.root(), options.name_, options.limits_, output ),
        type_( knownType( factsOf( options.root(), options.name_ ) ).valueType() ),
        valueJson_( &type_ ),
        keyJson_( type_.fields[0].type ),
        value_( type_.record->valueSize / 4 ),
        follower_(
            Quill::tableType( type_.name )
                ->follower( following_.activity(), options.root(), options.name_,
                            { [this] { ready(); }, [this]( U32 const * key ) { told( key ); },
                              [this]( bool is ) { following_.attached( is ); } } ) ) {}

  Status status() {
    following_.run();
    return succeeded;
  }

 private:
  void ready() {
    std::vector< Column > columns{ { "change" } };
    addEntryHeadings( type_, {}, columns );
    std::vector< Row > rows;
    U32 place = 0;
    while( rows.size() < 1024 && follower_->next( place, value_.data() ) )
      rows.push_back( row( "set", *type_.record->value( value_.data() ) ) );
    columns_.emplace( entryColumns( columns, rows ) );
    if( !options_.isJson_ )
      following_.write( columns_->headings() );
    for( place = 0; options_.isAll_ && follower_->next( place, value_.data() ); )
      if( !shown( "set", *type_.record->value( value_.data() ) ) )
        return;
  }
  void told( U32 const * key ) {
    if( follower_->lookup( key, value_.data() ) )
      shown( "set", *type_.record->value( value_.data() ) );
    else
      shown( "gone", *type_.record->key( key ) );
  }

  /// Prints a line; false when that was the last one.
  bool shown( char const * change, GenericIf const & what ) {
    if( !options_.isJson_ )
      return following_.show( columns_->line( row( change, what ) ) );
    bool const isGone = what.type() != &type_;
    std::string text = std::string( "{\"schema\": \"lumo.table.follow/1\", \"change\": \"" ) +
                       change + "\", \"" + ( isGone ? "key" : "entry" ) + "\": ";
    ( isGone ? keyJson_ : valueJson_ ).append( text, what );
    return following_.show( text + "}\n" );
  }
  /// Of a key alone, which is the first field, the other columns are empty.
  Row row( std::string const & change, GenericIf const & what ) const {
    Row row{ change };
    addEntryTexts( what, row );
    std::vector< Column > columns;
    addEntryHeadings( type_, {}, columns );
    row.resize( 1 + columns.size() );
    return row;
  }

  TableFollow const & options_;
  Following following_;
  KoiType const & type_;
  Koi::ValueToJson const valueJson_, keyJson_;
  std::vector< U32 > value_;
  std::optional< Columns > columns_;
  std::unique_ptr< Quill::AnyFollower > const follower_;
};

Status TableFollow::run( Output & output ) const {
  requireTable( root(), name_ );
  return onTable( name_, [&] { return Run( *this, output ).status(); } );
}

}  // namespace

std::unique_ptr< Subcommand > tableFollow( CLI::App & table ) {
  return std::make_unique< TableFollow >( table );
}

}  // namespace Lumo
