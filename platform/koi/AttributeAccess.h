// AttributeAccess.h: what attribute logs and reflection can do with one attribute of any entity of
// a type. One static object an attribute; the templates behind it are in AttributeLog.h. Attributes
// that hold the same share their code: an object differs in where the attribute is and in its
// mutators.
//
// Used on the entity's thread. An entity that is handed over is of the type that the attribute
// belongs to, or of one that extends it. What a kind of attribute cannot do asserts.
#pragma once

#include <functional>
#include <memory>

#include <koi/AttributeTable.h>
#include <koi/FlowOut.h>
#include <koi/GenericEntity.h>
#include <koi/Place.h>

namespace Koi {

class Entity;
class FlowIn;
class TableCollection;

/// What is known while the first flow of a collection is taken in: which members were named.
class KOI_PUBLIC ResyncState {
 public:
  virtual ~ResyncState();
};

/// An attribute and the entity type that declares it.
struct AttributeName {
  AttributeKind kind;
  char const * owner;  ///< "Bridging::FdbStatus"
  char const * name;
};

class KOI_PUBLIC AttributeAccess {
 public:
  constexpr explicit AttributeAccess( AttributeName const & name )
      : kind( name.kind ), name_( name ) {}

  AttributeKind const kind;

  /// Whether it has mutators, so that logs carry it.
  bool isState() const { return kind >= AttributeKind::scalar; }
  bool isCollection() const { return kind >= AttributeKind::members; }
  /// Whether what is read has a key.
  bool isKeyed() const { return isCollection() || kind == AttributeKind::table; }
  bool hasChildren() const {
    return kind == AttributeKind::child || kind == AttributeKind::children;
  }

  /// The type of a child; null where there are none, or they are of any type.
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
  /// Since its last flush the collection changed in a way that single members do not tell.
  virtual bool isToBeWhole( Entity const &, Place const & ) const { return false; }
  /// Changes the attribute as the peer says, through its mutators.
  virtual void apply( Entity & entity, FlowIn & flow ) const;

  // ---- reflection
  /// As GenericIfOp says.
  GenericIfPtr attributeOp( Entity & entity, GenericIfOp const & op, CtorArgs const & args ) const;
  /// A walk over the members; null where there are none.
  virtual Ptr< GenericIfIterator > iterator( Entity & entity ) const;
  /// The table; null where it is none.
  virtual TableCollection * table( Entity & entity ) const;

  // ---- the places of logs in a collection
  virtual void placeIs( Entity & entity, Place & place ) const;
  virtual void placeDel( Entity & entity, Place & place ) const;
  /// The peer has all that is there.
  virtual void placeIsKnown( Entity & entity, Place & place ) const;
  virtual void ack( Entity & entity, Place & place ) const;
  virtual void unsend( Entity & entity, Place & place ) const;

 protected:
  ~AttributeAccess() = default;
  /// "Bridging::FdbStatus::fid", for messages.
  std::string what() const { return std::string( name_.owner ) + "::" + name_.name; }

 private:
  // Of attributeOp(), which has seen that there is such an operation and, of read(), that the
  // arguments are as many as it takes.
  virtual GenericIfPtr read( Entity & entity, CtorArgs const & args ) const = 0;
  virtual GenericIfPtr set( Entity & entity, CtorArgs const & args ) const;
  virtual GenericIfPtr del( Entity & entity, CtorArgs const & args ) const;

  AttributeName const name_;
};

/// A constructor parameter, a constant, what is computed: a mirror has it by itself.
class KOI_PUBLIC ReadAccess final : public AttributeAccess {
 public:
  using Get = GenericIfPtr ( * )( Entity & entity );
  constexpr ReadAccess( AttributeName const & name, Get get )
      : AttributeAccess( name ), get_( get ) {}

 private:
  GenericIfPtr read( Entity & entity, CtorArgs const & ) const override { return get_( entity ); }

  Get const get_;
};

/// A table in shared memory: other processes attach to it by themselves.
class KOI_PUBLIC TableAccess final : public AttributeAccess {
 public:
  using Table = TableCollection & (*)( Entity & entity );
  constexpr TableAccess( AttributeName const & name, Table at )
      : AttributeAccess( name ), table_( at ) {}

  Ptr< GenericIfIterator > iterator( Entity & entity ) const override;
  TableCollection * table( Entity & entity ) const override;

 private:
  GenericIfPtr read( Entity & entity, CtorArgs const & args ) const override;

  Table const table_;
};

/// A keyed collection or a queue.
class KOI_PUBLIC CollectionAccess : public AttributeAccess {
 public:
  using AttributeAccess::AttributeAccess;
  void apply( Entity & entity, FlowIn & flow ) const final;

 protected:
  ~CollectionAccess() = default;

 private:
  /// The two ends of a first flow: what was there, and what to make of what was named since.
  virtual std::unique_ptr< ResyncState > beginWhole( Entity & entity ) const = 0;
  virtual void endWhole( Entity & entity, FlowIn & flow, ResyncState & state ) const = 0;
  /// A member is there or not. The operation begins at `start`.
  virtual void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const & start,
                            LogOp op ) const = 0;
  /// The tail of a queue.
  virtual void applyTail( Entity & entity, FlowIn & flow ) const;
  /// All that came is applied.
  virtual void applied( FlowIn & ) const {}
};

}  // namespace Koi
