// KoiQuillMapBody.h: the bodies of KoiQuillMap. Included only where the values of tables are
// registered.
#pragma once

#include <vector>

#include <koi/CtorArguments.h>
#include <quill/KoiQuillMap.h>
#include <quill/QuillMap.h>

namespace KoiQuill {

// ---- walks

template< class K, class V >
struct KoiQuillMap< K, V >::Iterator::Walk {
  Quill::QuillMap< V > * map;
  typename Quill::QuillMap< V >::Hint hint;
  V value;
  K key;
};

template< class K, class V >
KoiQuillMap< K, V >::Iterator::Iterator() = default;
template< class K, class V >
KoiQuillMap< K, V >::Iterator::~Iterator() = default;
template< class K, class V >
KoiQuillMap< K, V >::Iterator::Iterator( KoiQuillMap const & table ) {
  if( !table.map_ )
    return;
  auto walk = std::make_unique< Walk >( &table.typed( *table.map_ ),
                                        typename Quill::QuillMap< V >::Hint{}, V(), K() );
  if( !walk->map->first( walk->value, walk->hint ) )
    return;
  walk->key = Quill::keyOf( walk->value );
  walk_ = std::move( walk );
}
template< class K, class V >
KoiQuillMap< K, V >::Iterator::Iterator( Iterator const & other )
    : walk_( other.walk_ ? std::make_unique< Walk >( *other.walk_ ) : nullptr ) {}
template< class K, class V >
auto KoiQuillMap< K, V >::Iterator::operator=( Iterator const & other ) -> Iterator & {
  walk_ = other.walk_ ? std::make_unique< Walk >( *other.walk_ ) : nullptr;
  return *this;
}
template< class K, class V >
K const & KoiQuillMap< K, V >::Iterator::key() const {
  return walk_->key;
}
template< class K, class V >
V const & KoiQuillMap< K, V >::Iterator::value() const {
  return walk_->value;
}
template< class K, class V >
auto KoiQuillMap< K, V >::Iterator::operator++() -> Iterator & {
  if( walk_->map->next( walk_->key, walk_->value, walk_->hint ) )
    walk_->key = Quill::keyOf( walk_->value );
  else
    walk_.reset();
  return *this;
}
template< class K, class V >
bool KoiQuillMap< K, V >::Iterator::isAt( Iterator const & other ) const {
  return walk_ && other.walk_ ? walk_->key == other.walk_->key : !walk_ && !other.walk_;
}

/// The same for reflection; it keeps the entity.
template< class K, class V >
class KoiQuillMap< K, V >::EntryWalk final : public Koi::GenericIfIterator {
 public:
  EntryWalk( Koi::Entity & owner, KoiQuillMap & table )
      : owner_( &owner ), table_( table ), at_( table ) {}

  bool iterNonnull() const override { return static_cast< bool >( at_ ); }
  Koi::GenericIfPtr iterKey() const override { return Koi::genericIf( at_.key() ); }
  Koi::GenericIfPtr iterObj() const override { return Koi::genericIf( table_.value( at_.key() ) ); }
  void iterInc() override { ++at_; }
  void iterDel() override { table_.koiDel( at_.key() ); }

 private:
  Koi::Ptr< Koi::Entity > const owner_;
  KoiQuillMap & table_;
  Iterator at_;
};

// ---- the table

template< class K, class V >
KoiQuillMap< K, V >::KoiQuillMap( Koi::Entity & owner, char const * name,
                                  Koi::AttributeCallback< Koi::Argument< K > > const & onKey,
                                  Koi::AttributeCallback<> const & onCollection )
    : KoiQuillMapBase( owner, name, onCollection ), onKey_( onKey ) {}
template< class K, class V >
KoiQuillMap< K, V >::~KoiQuillMap() = default;

template< class K, class V >
std::unique_ptr< Quill::QuillMapState > KoiQuillMap< K, V >::made( std::string const & quillName ) {
  typename Quill::QuillMap< V >::Handlers handlers;
  handlers.onCollection = [this] { collectionIsReady(); };
  handlers.onKey = [this]( K const & k ) { koiNotifyKey( k ); };
  return std::make_unique< Quill::QuillMap< V > >( quillName, std::move( handlers ) );
}
template< class K, class V >
Quill::QuillMap< V > & KoiQuillMap< K, V >::typed( Quill::QuillMapState & map ) const {
  return static_cast< Quill::QuillMap< V > & >( map );
}

template< class K, class V >
std::optional< V > KoiQuillMap< K, V >::lookup( K const & k ) const {
  if( !map_ )
    return std::nullopt;
  std::optional< V > value( std::in_place );
  bool found = false;
  typed( *map_ ).lookup( k, found, *value );
  return found ? value : std::nullopt;
}
template< class K, class V >
V KoiQuillMap< K, V >::value( K const & k ) const {
  V value{};
  bool found = false;
  if( map_ )
    typed( *map_ ).safeLookup( k, found, value );
  return found ? value : V();
}

template< class K, class V >
void KoiQuillMap< K, V >::koiIs( V const & v ) {
  Koi::checkRange( v );
  if( typed( written() ).safeWriteChange( v ) )
    koiNotifyKey( Quill::keyOf( v ) );
}
template< class K, class V >
V KoiQuillMap< K, V >::koiDel( K const & k ) {
  K const key = k;  // k may stand in what an observer changes
  auto & map = typed( written() );
  V const was = value( key );
  if( !map.safeRemove( key ) )
    return V();
  koiNotifyKey( key );
  return was;
}
template< class K, class V >
void KoiQuillMap< K, V >::koiDelAll() {
  std::vector< K > keys;
  keys.reserve( size() );
  for( auto const & i : *this )
    keys.push_back( i.key() );
  for( auto const & key : keys )
    koiDel( key );
}
template< class K, class V >
void KoiQuillMap< K, V >::koiOpen( V const & v ) {
  Koi::checkRange( v );
  typed( written() ).writer().directWrite( Quill::keyOf( v ) );
}
template< class K, class V >
void KoiQuillMap< K, V >::koiCommit( V const & v ) {
  Koi::checkRange( v );
  typed( written() ).directCommit( v );
  koiNotifyKey( Quill::keyOf( v ) );
}

template< class K, class V >
Koi::GenericIfPtr KoiQuillMap< K, V >::koiEntry( std::string const & what,
                                                 Koi::CtorArgs const & args ) const {
  auto const entry = lookup( Koi::ArgumentOf< K >::from( what, args, 0 ) );
  return entry ? Koi::genericIf( *entry ) : Koi::GenericIfPtr();
}
template< class K, class V >
Koi::Ptr< Koi::GenericIfIterator > KoiQuillMap< K, V >::koiEntries( Koi::Entity & owner ) {
  return new EntryWalk( owner, *this );
}

}  // namespace KoiQuill
