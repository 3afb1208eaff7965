#include <koi/AttributeAccess.h>

#include <koi/Assert.h>

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
void AttributeAccess::apply( Entity &, FlowIn & ) const { notOfThisKind(); }
void AttributeAccess::placeIs( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::placeDel( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::placeIsKnown( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::ack( Entity &, Place & ) const { notOfThisKind(); }
void AttributeAccess::unsend( Entity &, Place & ) const { notOfThisKind(); }

}  // namespace Koi
