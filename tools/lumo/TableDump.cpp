// TableDump.cpp: `lumo table dump`: the entries of a table, one after the other as they are read.
#include <algorithm>
#include <optional>

#include <koi/RecordOps.h>
#include <koijson/ValueToJson.h>

#include "Columns.h"
#include "EntryTexts.h"
#include "Subcommands.h"
#include "TableFacts.h"

namespace Lumo {
namespace {

using Koi::GenericIf;
using Koi::KoiType;
using Koi::U32;
using Koi::U64;

/// Where entries go.
class Entries {
 public:
  virtual ~Entries() = default;
  virtual void add( GenericIf const & value ) = 0;
  virtual void finish() = 0;
};

class JsonEntries final : public Entries {
 public:
  JsonEntries( Output & output, KoiType const & type, std::string const & table )
      : output_( output ), json_( &type ) {
    output_.write( "{\"schema\": \"lumo.table.dump/1\", \"table\": " + Koi::jsonQuoted( table ) +
                   ", \"entries\": [" );
  }
  void add( GenericIf const & value ) override {
    std::string text = isFirst_ ? "\n  " : ",\n  ";
    json_.append( text, value );
    output_.write( text );
    isFirst_ = false;
  }
  void finish() override { output_.write( isFirst_ ? "]}\n" : "\n]}\n" ); }

 private:
  Output & output_;
  Koi::ValueToJson const json_;
  bool isFirst_ = true;
};

/// Columns are as wide as the first rows need; who comes later and needs more takes it.
class TextEntries final : public Entries {
 public:
  TextEntries( Output & output, KoiType const & type ) : output_( output ) {
    addEntryHeadings( type, {}, columns_ );
  }
  void add( GenericIf const & value ) override {
    Row row;
    addEntryTexts( value, row );
    if( fitted_ ) {
      output_.write( fitted_->line( row ) );
      return;
    }
    first_.push_back( std::move( row ) );
    if( first_.size() == 1024 )
      fit();
  }
  void finish() override {
    if( !fitted_ )
      fit();
  }

 private:
  void fit() {
    fitted_.emplace( entryColumns( columns_, first_ ) );
    output_.write( fitted_->headings() );
    for( Row const & row : first_ )
      output_.write( fitted_->line( row ) );
    first_.clear();
  }

  Output & output_;
  std::vector< Column > columns_;
  std::vector< Row > first_;
  std::optional< Columns > fitted_;
};

class TableDump final : public Subcommand {
 public:
  explicit TableDump( CLI::App & table )
      : Subcommand( table, "dump", "shows the entries of a table" ) {
    command()
        .add_option( "TABLE", name_, "a table, as counters/vlanIntf" )
        ->required()
        ->type_name( "" );
    command()
        .add_option( "--key", keys_,
                     "show the entry of this key alone: its text, or its fields' texts with commas "
                     "between them; may be given several times" )
        ->type_name( "TEXT" )
        ->take_all()
        ->expected( 1 );
    command().add_option( "--count", count_, "show so many entries at most" )->type_name( "N" );
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    return onTable( name_, [&] { return dumped( output ); } );
  }

 private:
  Status dumped( Output & output ) const {
    requireTable( root(), name_ );
    auto const facts = factsOf( root(), name_ );
    auto const & table = knownType( facts );
    KoiType const & type = table.valueType();
    auto const & record = *type.record;
    // What is asked for is understood before anything is printed.
    std::vector< std::vector< U32 > > keys;
    for( std::string const & text : keys_ )
      keys.push_back( wordsOf( *type.fields[0].type, record, text ) );
    auto const reader = table.reader( root(), name_ );
    std::unique_ptr< Entries > entries;
    if( isJson_ )
      entries = std::make_unique< JsonEntries >( output, type, name_ );
    else
      entries = std::make_unique< TextEntries >( output, type );
    Status status = succeeded;
    std::vector< U32 > value( record.valueSize / 4 );
    for( std::size_t i = 0; i < keys.size(); ++i )
      if( reader->lookup( keys[i].data(), value.data() ) ) {
        entries->add( *record.value( value.data() ) );
      } else {
        complain( name_ + ": there is no entry " + keys_[i] );
        status = absent;
      }
    if( keys.empty() ) {
      U64 left = count_;
      for( bool isThere = reader->first( value.data() ); isThere && left-- > 0 && output.isOpen();
           isThere = reader->next( value.data(), value.data() ) )
        entries->add( *record.value( value.data() ) );
    }
    entries->finish();
    return status;
  }

  static std::vector< U32 > wordsOf( KoiType const & type, Koi::RecordOps const & record,
                                     std::string const & text ) {
    std::vector< U32 > words( record.keySize / 4 );
    try {
      record.putKey( *keyFromText( type, text ), words.data() );
    } catch( Koi::Exception const & e ) {
      throw Failure( wrongUse, "--key " + text + ": " + e.what() );
    }
    return words;
  }

  std::string name_;
  std::vector< std::string > keys_;
  U64 count_ = ~U64{ 0 };
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > tableDump( CLI::App & table ) {
  return std::make_unique< TableDump >( table );
}

}  // namespace Lumo
