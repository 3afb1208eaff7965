// FdbStatusSm.cpp: how learned hosts come into the table, and out of it.
//
// What is written is what the source has now of a key, whatever was told. A host that is there and
// different is overwritten, not deleted first: who follows the table is never told that it went.

#include <Lumo/FdbStatusSm.h>

#include <vector>

#include <mem/Rova.h>
#include <ntrace/Ntrace.h>
#include <quill/QuillException.h>
#include <reactors/FdbCopy.h>

namespace Bridging {
namespace {

using Quill::Bridging::QuillFdbStatus;

// ---- the writer

KoiQuill::KoiQuillMapBase & tableOf( WriterFdbStatusSm const & sm ) {
  return sm.quillStatus()->quillFdbStatusControl();
}

/// The table is there, and is kept equal.
bool isWriting( WriterFdbStatusSm const & sm ) {
  return sm.initialized() && sm.quillStatus() && tableOf( sm ).isReady();
}

bool has( WriterFdbStatusSm const & sm, HostKey const & key ) {
  Koi::Ptr< FdbStatus > const fdb = sm.fdbStatus( key.fid() );
  return fdb && fdb->learnedHost().contains( key.addr() );
}

void noRoom( WriterFdbStatusSm & sm, HostKey const & key, Koi::Exception const & why ) {
  int const level = sm.pendingHost().empty() ? 0 : 7;  // a flood is said once
  sm.pendingHostIs( key, true );
  sm.numRefusedIs( sm.numRefused() + 1 );
  Ntrace::standard().trace( level, "WriterFdbStatusSm: no room for ", key.addr().stringValue(),
                            " in ", key.fid().value(), ", to be tried again: ", why.what() );
}

/// Makes the table's entry what the source has of that key; false when there was no room to do so.
bool settle( WriterFdbStatusSm & sm, HostKey const & key ) {
  auto & table = *sm.quillStatus();
  try {
    if( has( sm, key ) )
      table.quillFdbStatusIs(
          entryOf( key, sm.fdbStatus( key.fid() )->learnedHost( key.addr() ) ) );
    else
      table.quillFdbStatusDel( key );
  } catch( Quill::TableFullException const & e ) {
    return noRoom( sm, key, e ), false;
  } catch( Rova::MemoryResourceException const & e ) {
    return noRoom( sm, key, e ), false;
  }
  sm.pendingHostDel( key );
  return true;
}

/// As many as there is room for.
void settlePending( WriterFdbStatusSm & sm ) {
  for( auto i = sm.pendingHostIterator(); i && settle( sm, HostKey( i.key() ) ); )
    ++i;
}

void handleLearnedHost( WriterFdbStatusSm & sm, HostKey const & key ) {
  bool const makesRoom = !has( sm, key );
  if( settle( sm, key ) && makesRoom )
    settlePending( sm );
}

void handleLearnedHosts( WriterFdbStatusSm & sm, Fid fid, FdbStatus const & fdb ) {
  if( !isWriting( sm ) ) {
    Ntrace::standard().trace( 5, "Quill collection not initialized yet" );
    return;
  }
  Ntrace::standard().trace( 5, "WriterFdbStatusSm::handleLearnedHosts()" );
  for( auto const & host : fdb.learnedHost() )
    handleLearnedHost( sm, HostKey( fid, host.key() ) );
}

/// How the table differs from the source before it is made equal.
struct Differences {
  std::vector< HostKey > keys;  ///< of entries that the source has not, or has otherwise
  bool lacks = false;           ///< the source has more
};

/// Raises Rova::CorruptionDetectedException.
Differences differencesOf( WriterFdbStatusSm const & sm ) {
  Differences found;
  std::size_t numKnown = 0, numHosts = 0;
  for( auto const & i : sm.quillStatus()->quillFdbStatus() ) {
    Koi::Ptr< FdbStatus > const fdb = sm.fdbStatus( i.key().fid() );
    bool const isKnown = fdb && fdb->learnedHost().contains( i.key().addr() );
    numKnown += isKnown;
    if( !isKnown || !Koi::same( fdb->learnedHost( i.key().addr() ), hostOf( i.value() ) ) )
      found.keys.push_back( i.key() );
  }
  for( auto const & fid : sm.fdbStatusKeys() )
    numHosts += sm.fdbStatus( fid )->learnedHost().size();
  found.lacks = numKnown < numHosts;
  return found;
}

/// Makes the table equal.
void handleInitialized( WriterFdbStatusSm & sm ) {
  Differences different;
  try {
    different = differencesOf( sm );
  } catch( Rova::CorruptionDetectedException const & e ) {
    return tableOf( sm ).corruptionDetected( e.what() );  // the table will come once more
  }
  sm.initializedIs( true );
  for( auto const & key : different.keys )
    settle( sm, key );
  if( different.lacks )
    for( auto const & fid : sm.fdbStatusKeys() )
      if( Koi::Ptr< FdbStatus > const fdb = sm.fdbStatus( fid ) )
        handleLearnedHosts( sm, fid, *fdb );
}

}  // namespace

void WriterFdbStatusSm::handleStatus() {
  fdbStatusDelAll();
  pendingHostDelAll();
  initializedIs( false );
  if( status() )
    for( auto const & fdb : status()->fdbStatus() )
      fdbStatusIs( fdb.key(), fdb.value() );
  handleQuillFdbStatus();
}

void WriterFdbStatusSm::handleQuillFdbStatus() {
  if( !status() || !quillStatus() || !tableOf( *this ).isReady() )
    return;
  handleInitialized( *this );
  // What was written is no change that was missed: of the table only that it comes is watched, and
  // one that was let go meanwhile comes later.
  if( isWriting( *this ) )
    quillStatus_.mark();
}

void WriterFdbStatusSm::handleFdbStatus( Fid const & fid ) {
  Koi::Ptr< FdbStatus > const was = fdbStatus( fid ), now = status()->fdbStatus( fid );
  if( was == now )
    return;
  if( now ) {
    fdbStatusIs( fid, now );
    handleLearnedHosts( *this, fid, *now );
  } else {
    fdbStatusDel( fid );
  }
  if( was && isWriting( *this ) )
    for( auto const & host : was->learnedHost() )
      Bridging::handleLearnedHost( *this, HostKey( fid, host.key() ) );
}

void WriterFdbStatusSm::handleLearnedHost( Fid const & fid, Wirex::EthAddr const & address ) {
  if( isWriting( *this ) )  // else the table is made equal when it comes
    Bridging::handleLearnedHost( *this, HostKey( fid, address ) );
}

// ---- the reader

namespace {

void remove( Status & status, HostKey const & key ) {
  Koi::Ptr< FdbStatus > const fdb = status.fdbStatus( key.fid() );
  if( !fdb )
    return;
  fdb->learnedHostDel( key.addr() );
  if( fdb->learnedHost().empty() )
    status.fdbStatusDel( key.fid() );
}

/// Removes the hosts that are not in the table.
void removeStrangers( Status & status, Quill::Bridging::Status const & quillStatus ) {
  for( auto const & i : status.fdbStatus() ) {
    Koi::Ptr< FdbStatus > const fdb = i.value();  // which may go with its last host
    for( auto const & host : fdb->learnedHost() )
      if( HostKey const key( i.key(), host.key() ); !quillStatus.quillFdbStatus().contains( key ) )
        remove( status, key );
  }
}

}  // namespace

void ReaderFdbStatusSm::handleQuillFdbStatus( HostKey const & key ) {
  auto & table = quillStatus()->quillFdbStatusControl();
  std::optional< QuillFdbStatus > entry;
  try {
    entry = quillStatus()->quillFdbStatus().lookup( key );
  } catch( Rova::CorruptionDetectedException const & e ) {
    return table.corruptionDetected( e.what() );
  } catch( Quill::ReaderStarvedException const & e ) {
    Ntrace::standard().trace( 0, "ReaderFdbStatusSm: looks at all again: ", e.what() );
    return table.map().tellAll();
  }
  if( entry )
    status()->fdbStatusIs( key.fid() )->learnedHostIs( hostOf( *entry ) );
  else
    remove( *status(), key );
}

void ReaderFdbStatusSm::handleQuillFdbStatus() { handleQuillFdbStatuses(); }

void ReaderFdbStatusSm::handleQuillFdbStatuses() {
  if( !quillStatus() || !quillStatus()->quillFdbStatusControl().initialized() )
    return;
  auto & table = quillStatus()->quillFdbStatusControl();
  bool const wasReady = table.isReady();
  try {
    if( wasReady )
      removeStrangers( *status(), *quillStatus() );
  } catch( Rova::CorruptionDetectedException const & e ) {
    return table.corruptionDetected( e.what() );
  }
  table.map().notifying( true );
  if( wasReady )  // else it says when it is
    table.map().tellAll();
}

}  // namespace Bridging
