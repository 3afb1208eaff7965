// Resolver.h: finds what the names in a model stand for.
//
// A name is looked for in the namespace where it stands, then in those around it. A type of another
// module needs a `uses`; an entity that is only pointed to, and what is only named, does not: it is
// declared forward.
#pragma once

#include <set>

#include "Findings.h"
#include "Model.h"

namespace Koigen {

class Resolver {
 public:
  /// Where a type stands decides how much of it must be known there; an entity's reactor is pointed
  /// to, the value of a table named.
  enum Need { complete, pointer, itsReactor, named };

  /// Enters all types of the model; finds types and enumerators that are declared twice.
  Resolver( Model & model, Findings & findings );

  /// Says what the name stands for, seen from `from`. False when it found an error: the use is
  /// then left unresolved.
  bool resolve( TypeUse & use, Declaration const & from, Need need );

  /// The declaration of that name as `from` sees it, without any finding; null when there is none.
  Declaration const * lookup( std::string const & name, Declaration const & from ) const;

  /// When all is resolved: tells each module what it must declare forward, and finds modules that
  /// are used but not needed.
  void finish();

 private:
  void enter( Declaration const & d );
  bool isHidden( std::string const & name, Declaration const & from,
                 Declaration const & found ) const;
  bool visible( TypeUse const & use, Declaration const & from, Declaration const & found,
                Need need );

  Model & model_;
  Findings & findings_;
  std::set< std::string > scopes_;        // all namespaces, those around others too
  std::map< std::string, Place > names_;  // what a namespace already holds, by full name
  std::set< std::pair< Module const *, Module const * > > needed_;
  std::map< Module const *, std::vector< Declaration const * > > forward_;
};

/// True when a whole type can be a key of a hashed collection.
bool isHashable( TypeUse const & type );

/// True when a whole type can be a key of a tree, or a field of an ordered structure.
bool isOrdered( TypeUse const & type );

/// The same type, held the same way.
bool same( TypeUse const & a, TypeUse const & b );

/// "Bridging::VlanId", "u16", "ref Bridging::Topology::TopoConfig".
std::string described( TypeUse const & type );

}  // namespace Koigen
