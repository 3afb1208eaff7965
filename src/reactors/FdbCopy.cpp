#include <reactors/FdbCopy.h>

namespace Bridging {

void copyFdb( Quill::Bridging::Status const & from, Status & to ) {
  for( auto const & i : from.quillFdbStatus() )
    to.fdbStatusIs( i.key().fid() )->learnedHostIs( hostOf( i.value() ) );
}

}  // namespace Bridging
