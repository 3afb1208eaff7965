// TableTypeOf.h: makes the tables of one value type known to programs that look at any table. What
// koigen writes for a module instantiates it once a type, which registers it when the module's
// library is loaded.
#pragma once

#include <algorithm>

#include <quill/ExistingTable.h>
#include <quill/QuillReader.h>
#include <quill/QuillShadow.h>
#include <quill/TableType.h>

namespace Quill {

template< class V >
class TableTypeOf final : public TableType {
 public:
  std::unique_ptr< AnyReader > reader( Mem::RootPath const & root,
                                       std::string_view name ) const override {
    return std::make_unique< Reader >( root, name );
  }
  std::unique_ptr< AnyFollower > follower( Koi::Activity * activity, Mem::RootPath const & root,
                                           std::string const & name,
                                           AnyFollower::Handlers handlers ) const override {
    return std::make_unique< Follower >( activity, root, name, std::move( handlers ) );
  }
  TableVerdict verdict( Mem::CopiedDir & copy ) const override;

 private:
  using RecordOf = Record< V >;

  class Reader final : public AnyReader {
   public:
    Reader( Mem::RootPath const & root, std::string_view name ) : reader_( root, name ) {}

    bool lookup( U32 const * key, U32 * value ) override {
      return isFound( value, [&]( auto & out ) { return engine().lookup( words( key ), out ); } );
    }
    bool first( U32 * value ) override {
      return isFound( value, [&]( auto & out ) { return engine().first( out ); } );
    }
    bool next( U32 const * key, U32 * value ) override {
      return isFound( value, [&]( auto & out ) { return engine().next( words( key ), out ); } );
    }

   private:
    typename QuillReader< V >::Engine & engine() { return reader_.engine(); }
    static KeyWords< RecordOf > words( U32 const * key ) {
      KeyWords< RecordOf > k;
      std::copy_n( key, k.count, k.word );
      return k;
    }
    template< class Sought >
    static bool isFound( U32 * value, Sought sought ) {
      ValueWords< RecordOf > out;
      if( !sought( out ) )
        return false;
      std::copy_n( out.word, numWordsOf< RecordOf >, value );
      return true;
    }

    QuillReader< V > reader_;
  };

  class Follower final : public AnyFollower {
   public:
    Follower( Koi::Activity * activity, Mem::RootPath const & root, std::string const & name,
              Handlers handlers )
        : onKey_( std::move( handlers.onKey ) ),
          shadow_( activity, root, name,
                   { std::move( handlers.onReady ), [this]( auto const & key ) { told( key ); },
                     std::move( handlers.onAttached ) } ) {}

    bool lookup( U32 const * key, U32 * value ) override {
      return isPut( shadow_.lookup( RecordOf::key( key ) ), value );
    }
    bool next( U32 & place, U32 * value ) override { return isPut( shadow_.next( place ), value ); }

   private:
    void told( typename RecordOf::Key const & key ) const {
      KeyWords< RecordOf > words{};
      RecordOf::putKey( key, words.word );
      onKey_( words.word );
    }
    static bool isPut( std::optional< V > const & from, U32 * value ) {
      if( from )
        RecordOf::put( *from, value );
      return from.has_value();
    }

    std::function< void( U32 const * ) > const onKey_;
    QuillShadow< V, Keeps::values > shadow_;
  };

  TableTypeOf() : TableType( V::_koiType ) {}

  static TableTypeOf const instance_;
};

template< class V >
TableTypeOf< V > const TableTypeOf< V >::instance_;

template< class V >
TableVerdict TableTypeOf< V >::verdict( Mem::CopiedDir & copy ) const {
  static Ntrace::Handler const silent( -1, {} );
  // What the table's own writer asks for is what its header says, if that is true.
  SlotTable::Header header;
  if( auto const slots = copy.open( SlotTable::fileName, Mem::CopiedFile::readOnly ) )
    header = loadedHeader< Mem::Copied, SlotTable::Header >( slots->base(), slots->size() );
  WriterTerms< RecordOf, Mem::Copied > terms;
  terms.layout = { RecordOf::valueType, header.classTypeName(), RecordOf::valueSize,
                   header.maxSlots, header.seed };
  terms.limits.maxSlots = header.maxSlots;
  ExistingTable< RecordOf, Mem::Copied > table( copy, terms, copy.kindle(), silent );
  table.taken();
  return { table.fault(), table.isMended() };
}

}  // namespace Quill
