#include <koi/AttributeAccess.h>

#include <koi/Assert.h>
#include <koi/CtorArguments.h>
#include <koi/FlowIn.h>
#include <koi/TableCollection.h>

namespace Koi {
namespace {

/// The runtime asked for what this kind of attribute cannot do.
[[noreturn]] void notOfThisKind() {
  KOI_ASSERT( !"an operation of another kind of attribute" );
  __builtin_unreachable();
}

}  // namespace

void AttributeAccess::eachChild( Entity const &, std::function< void( Entity & ) > const & ) const {
}
Entity * AttributeAccess::childOf( Entity const &, String8 const & ) const { return nullptr; }
void AttributeAccess::write( Entity const &, FlowOut & ) const { notOfThisKind(); }
void AttributeAccess::writeMember( Entity const &, NboAttrLog::In &, FlowOut & ) const {
  notOfThisKind();
}
bool AttributeAccess::writeWhole( Entity &, Place &, bool, FlowOut & ) const { notOfThisKind(); }
bool AttributeAccess::writePending( Entity &, Place &, FlowOut & ) const { notOfThisKind(); }
Ptr< GenericIfIterator > AttributeAccess::iterator( Entity & ) const { return nullptr; }
TableCollection * AttributeAccess::table( Entity & ) const { return nullptr; }
GenericIfPtr AttributeAccess::set( Entity &, CtorArgs const & ) const { notOfThisKind(); }
GenericIfPtr AttributeAccess::del( Entity &, CtorArgs const & ) const { notOfThisKind(); }
void AttributeAccess::apply( Entity &, FlowIn & ) const { notOfThisKind(); }
void AttributeAccess::placeIs( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::placeDel( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::placeIsKnown( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::ack( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::unsend( Entity &, Place & ) const { notOfThisKind(); }

GenericIfPtr AttributeAccess::attributeOp( Entity & entity, GenericIfOp const & op,
                                           CtorArgs const & args ) const {
  bool const mayBeDeleted = isCollection() || hasChildren();
  switch( op.code ) {
    case GenericIfOp::read:
      requireCount( what(), args, isKeyed() ? 1 : 0 );
      return read( entity, args );
    case GenericIfOp::set:
      if( isState() )
        return set( entity, args );
      break;
    case GenericIfOp::del:
      if( mayBeDeleted ) {
        requireCount( what(), args, isCollection() ? 1 : 0 );
        return del( entity, args );
      }
      break;
  }
  GenericIfImpl::throwOpNotSupportedException( op );
}

TableCollection::~TableCollection() = default;

Ptr< GenericIfIterator > TableAccess::iterator( Entity & entity ) const {
  return table_( entity ).koiEntries( entity );
}
TableCollection * TableAccess::table( Entity & entity ) const { return &table_( entity ); }
GenericIfPtr TableAccess::read( Entity & entity, CtorArgs const & args ) const {
  return table_( entity ).koiEntry( what(), args );
}

void CollectionAccess::applyTail( Entity &, FlowIn & ) const {
  throwParseException( "attribute log: no queue" );
}

void CollectionAccess::apply( Entity & entity, FlowIn & flow ) const {
  while( flow.in.left() != 0 ) {
    NboAttrLog::In const start = flow.in;
    switch( LogOp const op = flow.op() ) {
      case LogOp::beginWhole:
        flow.adapter.resyncState( flow.attribute ) = beginWhole( entity );
        break;
      case LogOp::endWhole:
        if( auto const state = std::move( flow.adapter.resyncState( flow.attribute ) ) )
          endWhole( entity, flow, *state );
        flow.adapter.freeResyncState( flow.attribute );
        break;
      case LogOp::tail:
        applyTail( entity, flow );
        break;
      case LogOp::crossed:
        flow.isCrossed = true;
        break;
      default:
        applyMember( entity, flow, start, op );
    }
  }
  applied( flow );
}

}  // namespace Koi
