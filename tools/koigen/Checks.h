// Checks.h: the parts of the check of one model. For Checker.cpp and the parts themselves.
//
// Declarations are checked in an order in which whatever one needs complete was checked before.
#pragma once

#include "Resolver.h"

namespace Koigen {

struct Checks {
  Findings & findings;
  Resolver & resolver;
};

/// Everything about one declaration.
void checkWrapper( Checks checks, Declaration & d );
void checkStructure( Checks checks, Declaration & d );
void checkEnumeration( Checks checks, Declaration & d );
void checkEntity( Checks checks, Declaration & d );
void checkReactor( Checks checks, Declaration & d );

/// The names and the documentation of the members; what they generate must not collide.
void checkMemberNames( Checks checks, Declaration const & d );

/// Parameters and result of a function or of a constructor by hand.
void checkFunction( Checks checks, Declaration const & d, Member & m );

/// A constant: its type and its value.
void checkConstant( Checks checks, Declaration const & d, Member & m );

/// An attribute of an entity, or of a reactor's own state.
void checkAttribute( Checks checks, Declaration const & d, Member & m );
void checkParam( Checks checks, Declaration const & d, Member & m );
void checkCollection( Checks checks, Declaration const & d, Member & m );
void checkTable( Checks checks, Declaration const & d, Member & m );

/// A default or constant of that type; `limit` is the member it belongs to.
void checkInitial( Checks checks, Declaration const & d, Member const & limit, Initial & initial,
                   TypeUse const & type );

}  // namespace Koigen
