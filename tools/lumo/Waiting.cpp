#include "Waiting.h"

namespace Lumo {

bool waitUntil( Coredb::TreeMount const & mount, std::function< bool() > const & isSo,
                Koi::Seconds most ) {
  bool isLate = false;
  Koi::Timer deadline( nullptr, [&] { isLate = true; } );
  deadline.delayIs( most );
  while( !isSo() ) {
    if( isLate || !mount.isConnected() )
      return false;
    Koi::defaultActivity()->runOnce();
  }
  return true;
}

std::string notClearedText( std::string const & what ) {
  return "not cleared within " + std::to_string( static_cast< int >( patience ) ) + " s: " + what;
}

}  // namespace Lumo
