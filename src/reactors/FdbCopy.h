// FdbCopy.h: learned hosts as entries of the table, and the other way round. Pure, but for
// copyFdb(), which is for the entities' thread.
#pragma once

#include <Lumo/QuillBridging.h>

namespace Bridging {

inline Quill::Bridging::QuillFdbStatus entryOf( HostKey const & key, LearnedHost const & host ) {
  return Quill::Bridging::QuillFdbStatus( key, host.intf(), host.moves(), host.lastMoveTime(),
                                          host.entryType() );
}
inline LearnedHost hostOf( Quill::Bridging::QuillFdbStatus const & entry ) {
  return LearnedHost( entry.key().addr(), entry.intf(), entry.moves(), entry.lastMoveTime(),
                      entry.entryType() );
}

/// Puts the hosts that the table has into the status, beside those that are there. Raises
/// Rova::CorruptionDetectedException and Quill::ReaderStarvedException; what came before stays.
KOI_PUBLIC void copyFdb( Quill::Bridging::Status const & from, Status & to );

}  // namespace Bridging
