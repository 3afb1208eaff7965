// AttributeReflection.h: what reflection can do with one attribute of an entity type: read it,
// change it through its mutators, walk its members. Included only where entity types are
// registered.
#pragma once

#include <koi/AttributeRow.h>
#include <koi/CtorArguments.h>

namespace Koi {

/// Calls a mutator with the wrapped arguments; what it returns, null for nothing.
template< class E, class Result, class... Given >
GenericIfPtr mutated( E & entity, Result ( E::*mutator )( Given... ), std::string const & what,
                      CtorArgs const & args ) {
  requireCount( what, args, sizeof...( Given ) );
  auto const call = [&]< std::size_t... i >( std::index_sequence< i... > ) {
    return ( entity.*
             mutator )( ArgumentOf< std::remove_cvref_t< Given > >::from( what, args, i )... );
  };
  if constexpr( std::is_void_v< Result > ) {
    call( std::index_sequence_for< Given... >() );
    return nullptr;
  } else {
    return genericIf( call( std::index_sequence_for< Given... >() ) );
  }
}

/// A walk over the members of one collection.
template< class E, class C, class Del >
class MembersIterator final : public GenericIfIterator {
 public:
  MembersIterator( E & entity, C & members, Del del )
      : entity_( &entity ), at_( members.koiIterator() ), del_( del ) {}
  bool iterNonnull() const override { return static_cast< bool >( at_ ); }
  GenericIfPtr iterKey() const override { return genericIf( at_.key() ); }
  GenericIfPtr iterObj() const override {
    typename C::Given const v = at_.value();
    return genericIf( v );
  }
  void iterInc() override { at_.advance(); }
  void iterDel() override { ( entity_.ptr()->*del_ )( at_.key() ); }

 private:
  Ptr< E > const entity_;
  typename C::Iterator at_;
  Del const del_;
};

/// The row of an attribute as reflection sees it.
template< auto const & rows, std::size_t index >
class ReflectedRow : public Row< rows, index > {
  using Base = Row< rows, index >;

 protected:
  using typename Base::Cell;
  using typename Base::E;

 public:
  GenericIfPtr attributeOp( Entity & entity, GenericIfOp const & op,
                            CtorArgs const & args ) const override {
    switch( op.code ) {
      case GenericIfOp::read:
        return read( entity, args );
      case GenericIfOp::set:
        if constexpr( requires { mutated( this->me( entity ), Base::row.set, what(), args ); } )
          return mutated( this->me( entity ), Base::row.set, what(), args );
        break;
      case GenericIfOp::del:
        if constexpr( requires { mutated( this->me( entity ), Base::row.del, what(), args ); } )
          return mutated( this->me( entity ), Base::row.del, what(), args );
        break;
    }
    GenericIfImpl::throwOpNotSupportedException( op );
  }

  Ptr< GenericIfIterator > iterator( Entity & entity ) const override {
    if constexpr( isMembers ) {
      using Iterator = MembersIterator< E, Cell, decltype( Base::row.del ) >;
      return new Iterator( this->me( entity ), this->cell( entity ), Base::row.del );
    } else {
      return nullptr;
    }
  }

 protected:
  ~ReflectedRow() = default;

 private:
  static constexpr bool isMembers = Base::row.kind >= AttributeKind::members;

  static std::string what() { return std::string( E::koiName ) + "::" + Base::row.name; }

  GenericIfPtr read( Entity & entity, CtorArgs const & args ) const {
    requireCount( what(), args, isMembers ? 1 : 0 );
    if constexpr( Base::row.kind == AttributeKind::computed ) {
      return genericIf( Base::row.of( this->me( entity ) ) );
    } else if constexpr( isMembers ) {
      Cell const & members = this->cell( entity );
      auto const & k = ArgumentOf< typename Cell::Key >::from( what(), args, 0 );
      return members.contains( k ) ? genericIf( typename Cell::Given( members.value( k ) ) )
                                   : GenericIfPtr();
    } else {
      return genericIf( CellOf< Cell >::given( this->cell( entity ) ) );
    }
  }
};

}  // namespace Koi
