// AttributeAccess.h: what attribute logs and reflection can do with one attribute of any entity of
// a type. One static object an attribute; the templates behind it are in AttributeLog.h.
//
// Used on the entity's thread. An entity that is handed over is of the type that the attribute
// belongs to, or of one that extends it. What a kind of attribute cannot do asserts.
#pragma once

#include <functional>
#include <memory>

#include <koi/AttributeTable.h>
#include <koi/GenericEntity.h>
#include <koi/Place.h>

namespace Koi {

class Entity;
class FlowIn;
class FlowOut;

/// What is known while the first flow of a collection is taken in: which members were named.
class KOI_PUBLIC ResyncState {
 public:
  virtual ~ResyncState();
};

class KOI_PUBLIC AttributeAccess {
 public:
  constexpr explicit AttributeAccess( AttributeKind kind_ ) : kind( kind_ ) {}

  AttributeKind const kind;

  /// Whether it has mutators, so that logs carry it.
  bool isState() const { return kind >= AttributeKind::scalar; }
  bool isCollection() const { return kind >= AttributeKind::members; }
  bool hasChildren() const {
    return kind == AttributeKind::child || kind == AttributeKind::children;
  }

  /// The type of a child; null where there are none.
  virtual KoiType const * childType() const { return nullptr; }
  /// Calls f with each child that is there.
  virtual void eachChild( Entity const & entity,
                          std::function< void( Entity & ) > const & f ) const;
  /// The child of that name; null when there is none.
  virtual Entity * childOf( Entity const & entity, String8 const & name ) const;

  /// Writes a scalar, or the only child.
  virtual void write( Entity const & entity, FlowOut & flow ) const;
  /// Writes the member of the key that `key` holds, be it there or not.
  virtual void writeMember( Entity const & entity, NboAttrLog::In & key, FlowOut & flow ) const;
  /// Writes members until there is no more room; true when all is written. The first flow begins
  /// with beginWhole where `begin` says so.
  virtual bool writeWhole( Entity & entity, Place & place, bool begin, FlowOut & flow ) const;
  virtual bool writePending( Entity & entity, Place & place, FlowOut & flow ) const;
  /// Changes the attribute as the peer says, through its mutators.
  virtual void apply( Entity & entity, FlowIn & flow ) const;

  // ---- reflection, as GenericIfOp says
  virtual GenericIfPtr attributeOp( Entity & entity, GenericIfOp const & op,
                                    CtorArgs const & args ) const = 0;
  /// A walk over the members; null where there are none.
  virtual Ptr< GenericIfIterator > iterator( Entity & entity ) const = 0;

  // ---- the places of logs in a collection
  virtual void placeIs( Entity & entity, Place & place ) const;
  virtual void placeDel( Entity & entity, Place & place ) const;
  /// The peer has all that is there.
  virtual void placeIsKnown( Entity & entity, Place & place ) const;
  virtual void ack( Entity & entity, Place & place ) const;
  virtual void unsend( Entity & entity, Place & place ) const;

 protected:
  ~AttributeAccess() = default;
};

}  // namespace Koi
