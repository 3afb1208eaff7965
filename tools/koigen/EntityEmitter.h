// EntityEmitter.h: the pieces of a member that an entity and a reactor have alike: its accessors
// and mutators, and the cell that holds it.
#pragma once

#include "Context.h"

namespace Koigen {

/// Who has a member, and what follows from it.
struct MemberOwner {
  Declaration const & declaration;
  bool notifies;  // an entity tells its observers, a reactor has none
};

/// "Koi::Ptr< TopoConfig >", "VlanId": what a reader of a member gets.
std::string givenType( Context const & context, TypeUse const & type );

/// The same as a parameter: "Koi::Ptr< TopoConfig > const &".
std::string givenArgument( Context const & context, TypeUse const & type );

/// "Wirex::IntfId const & intfId, Koi::U32 genId" and "intfId, genId": a constructor's parameters,
/// without the first `skip` of them. A constructor without any takes a name.
std::string parameterList( Context const & context,
                           std::vector< EntityParameter > const & parameters,
                           std::size_t skip = 0 );
std::string argumentList( std::vector< EntityParameter > const & parameters, std::size_t skip = 0 );

/// The accessor of a constructor parameter, and the cell that holds it.
std::string paramText( Context const & context, Member const & member );
std::string paramCellText( Context const & context, Member const & member );

/// A member as it stands in the class, and its mutators as they stand in the module's source. What
/// includes the header would otherwise compile them again.
struct MemberTexts {
  std::string declared, defined;
};

/// The accessors and mutators of a scalar, a collection or a queue.
MemberTexts attributeTexts( Context const & context, MemberOwner const & owner,
                            Member const & member );

/// "bool enabled_ = true;" in a line of its own.
std::string cellText( Context const & context, Member const & member );

/// The line that refuses what `argument` is, before anything changes; empty when all will do.
std::string refusal( Declaration const & owner, Member const & member,
                     std::string const & argument = "v" );

}  // namespace Koigen
