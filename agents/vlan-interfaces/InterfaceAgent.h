// InterfaceAgent.h: the agent of a system's interfaces: serves their tree, decides which source of
// VLAN interfaces prevails, makes the interfaces, hands out port ids, counts. On its activity's
// thread.
#pragma once

#include <Lumo/EthIntfPortIdManager.h>
#include <VlanIntfApplier.h>
#include <coredb/Tree.h>
#include <coredb/TreeServer.h>
#include <frames/Port.h>
#include <mem/TableDir.h>
#include <quill/EntityManager.h>

#include <functional>
#include <map>
#include <memory>

#include "IntfCounts.h"

namespace VlanInterfaces {

class InterfaceAgent {
 public:
  struct Options {
    Koi::Name sysname;
    Mem::RootPath root;
    Koi::Seconds interval = 1;  ///< from one refresh of the counters to the next
    Koi::Ptr< Bridging::Config const > config;
  };

  /// Becomes the writer of the table, and serves the tree. Raises Rova::MemoryResourceException
  /// when there is another writer, or no room; Coredb::ServeException.
  InterfaceAgent( Koi::Activity * activity, Options const & options );
  ~InterfaceAgent();
  InterfaceAgent( InterfaceAgent const & ) = delete;
  InterfaceAgent & operator=( InterfaceAgent const & ) = delete;

  std::string const & socket() const { return server_->path(); }

  /// The port of that interface, which frames come in on; it is there, and up, from now on.
  Frames::Port & port( Wirex::IntfId intf );

  /// Counts a frame, or drops it as its port does.
  void frameIs( Frames::Port & port, Frames::CapturedFrame const & frame ) {
    if( Koi::U16 const vlan = port.vlanOf( frame.bytes ); vlan != 0 )
      counts_->frameIs( vlan, frame );
  }
  Koi::U64 numFrames() const { return counts_->numFrames(); }

  /// The table has all that was counted. False, after a line on standard error, when there is no
  /// room for it.
  bool refresh();

  /// Told of an interface that another source has now, or none.
  void onWinner(
      std::function< void( Wirex::IntfId const &, Lumo::SourcePriorityPair const & ) > f );

 private:
  class Winners;

  /// The entity of type E at that place of the system's tree.
  template< class E >
  Koi::Ptr< E > placed( char const * place );

  Koi::Ptr< Coredb::Dir > const tree_;
  Koi::Ptr< Bridging::Config const > const config_;
  Koi::Ptr< Bridging::Topology::Config const > const topology_;
  std::map< Wirex::IntfId, Frames::Port > ports_;

  Koi::Ptr< Lumo::DynVlanIntfList > const list_;
  Koi::Ptr< Interface::VlanIntfStatusDir > const vlanIntfs_;
  Koi::Ptr< Interface::EthIntfStatusDir > const ethIntfs_;
  Koi::Ptr< Interface::VlanIntfCounterWriterStatus > const counted_;
  Koi::Ptr< KoiQuill::EntityManager > const tables_;
  std::unique_ptr< IntfCounts > counts_;

  Koi::Ptr< Interface::VlanIntfApplySm > applier_;
  Koi::Ptr< Lumo::DynVlanIntfReactor > arbiter_;
  Koi::Ptr< Interface::VlanIntfCounterCheckpointSm > checkpoints_;
  Koi::Ptr< Interface::PortIdManager > portIds_;
  std::unique_ptr< Winners > winners_;
  std::unique_ptr< Coredb::TreeServer > server_;
  Koi::Seconds const interval_;
  Koi::Timer timer_;
};

}  // namespace VlanInterfaces
