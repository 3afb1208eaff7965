#include "MacSubcommand.h"

#include "TableFacts.h"

namespace Lumo {

void MacSubcommand::requireMacTable() const {
  requireTable( root(), table_ );
  auto const facts = factsOf( root(), table_ );
  if( !facts.fault.empty() )
    throw Failure( corrupt, table_ + ": corrupt: " + facts.fault );
  auto const holds = facts.slots.valueTypeName();
  if( holds != Quill::Bridging::QuillFdbStatus::koiName )
    throw Failure( unreachable, "table " + table_ + " holds " + holds + ", no MAC addresses" );
}

}  // namespace Lumo
