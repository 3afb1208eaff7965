// Refusal.h: what somebody who was refused was told.
#pragma once

#include <string>

#include <koi/Exception.h>

/// The text of the exception that act() raises; "accepted" when it raises none. An exception of
/// another type leaves.
template< class Refusal = Koi::RangeException >
std::string refusal( auto act ) {
  try {
    act();
  } catch( Refusal const & e ) {
    return e.what();
  }
  return "accepted";
}
