// QuillReader.h: looks entries up in the files of a table that another process writes. One thread
// uses an object; any number of objects, in any processes, read one table. It takes no lock and
// costs the writer nothing; see TableReader.h for what a look-up may find.
//
// An object reads the files that it opened. When the table is formatted anew they stay as they
// were; isReplaced() says so.
#pragma once

#include <optional>
#include <vector>

#include <quill/AttachedReader.h>

namespace Quill {

template< class V >
class QuillReader {
 public:
  using RecordOf = Record< V >;
  using Key = typename RecordOf::Key;
  using Engine = TableReader< RecordOf, Mem::Plain >;

  /// Opens the table `name`. Raises as TableDir and attachedReader() do.
  QuillReader( Mem::RootPath const & root, std::string_view name,
               Ntrace::Handler const & trace = Ntrace::Handler() )
      : trace_( trace ),
        root_( root ),
        name_( name ),
        dir_( root, name, Mem::MappedFile::readOnly ),
        engine_( attachedReader< RecordOf >( dir_, trace_ ) ) {}

  /// The entry of a key. Raises as TableReader::lookup() does.
  std::optional< V > lookup( Key const & key ) {
    typename Engine::Value value;
    if( !engine_->lookup( keyWords( key ), value ) )
      return std::nullopt;
    return RecordOf::value( value.word );
  }
  /// As many look-ups, faster: calls found( i, value or null ) for each, in order.
  template< class Found >
  void lookup( std::span< Key const > keys, Found found ) {
    constexpr std::size_t most = 64;
    KeyWords< RecordOf > words[most];
    for( std::size_t first = 0; first < keys.size(); first += most ) {
      std::size_t const count = std::min( most, keys.size() - first );
      for( std::size_t i = 0; i < count; ++i )
        words[i] = keyWords( keys[first + i] );
      engine_->lookup( std::span( words, count ),
                       [&]( std::size_t i, typename Engine::Value const * value ) {
                         if( !value ) {
                           found( first + i, static_cast< V const * >( nullptr ) );
                           return;
                         }
                         V const v = RecordOf::value( value->word );
                         found( first + i, &v );
                       } );
    }
  }

  /// The first entry, and the one behind a key, which need not be there any more; nothing at the
  /// end. Raise as TableReader::lookup() does, and Rova::CorruptionDetectedException
  /// "QuillReader::next() corrupt key detected" for a key with something where nothing belongs.
  std::optional< V > first() {
    typename Engine::Value value;
    return engine_->first( value ) ? std::optional< V >( walkedTo( value ) ) : std::nullopt;
  }
  std::optional< V > next( Key const & key ) {
    typename Engine::Value value;
    return engine_->next( keyWords( key ), value ) ? std::optional< V >( walkedTo( value ) )
                                                   : std::nullopt;
  }

  /// Calls visit( value ) for all entries, fast and in no order, as TableReader::sweep() does.
  template< class Visit >
  void sweep( Visit visit ) {
    engine_->sweep( [&]( auto const & value ) { visit( RecordOf::value( value.word ) ); } );
  }

  /// The table has other files by now: this object reads what was before.
  bool isReplaced() const { return Quill::isReplaced( root_, name_, engine_->slots().file() ); }
  /// The table's sequence: of the last notification. Raises as attachedQueue() does.
  U64 sequence() {
    if( !queue_ )
      queue_ = attachedQueue( dir_, engine_->slots().file(), trace_ );
    return queue_->tableSequence();
  }
  Engine & engine() { return *engine_; }

 private:
  static KeyWords< RecordOf > keyWords( Key const & key ) {
    KeyWords< RecordOf > w{};
    RecordOf::putKey( key, w.word );
    return w;
  }

  /// A walk goes on behind the key as the value has it: padding that is not zero would end nowhere.
  static V walkedTo( typename Engine::Value const & value ) {
    if( keyWords( RecordOf::key( value.word ) ) != value.key() )
      throw Rova::CorruptionDetectedException( "QuillReader::next() corrupt key detected" );
    return RecordOf::value( value.word );
  }

  Ntrace::Handler const trace_;
  Mem::RootPath const root_;
  std::string const name_;
  Mem::TableDir dir_;
  std::unique_ptr< Engine > engine_;
  std::unique_ptr< ConquerReader< Mem::Plain > > queue_;
};

}  // namespace Quill
