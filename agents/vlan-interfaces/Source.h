// Source.h: one source that asks for VLAN interfaces, in a process of its own. On its activity's
// thread.
//
// Commands, a line each:
//
//     announce vlan10 [mtu N] [description TEXT] [cli]    asks for it; announced again, changes it
//     withdraw vlan10
//     priority low|medium|high
//     wait SECONDS                                        does nothing meanwhile
//
// What it asks for stays in the tree until it is withdrawn: a source that is killed leaves it.
#pragma once

#include <Lumo/VlanDynIntfSm.h>
#include <coredb/Tree.h>
#include <coredb/TreeMount.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace VlanInterfaces {

class Source {
 public:
  using Say = std::function< void( std::string const & line ) >;

  /// The source of that name in the tree that is mounted at that socket. `say` is told what becomes
  /// of what it asks for.
  Source( Koi::Activity * activity, std::string const & name, Koi::Name const & sysname,
          std::string const & socket, Say say );
  ~Source();
  Source( Source const & ) = delete;
  Source & operator=( Source const & ) = delete;

  /// Waits until the tree is there, at most so long, and takes its place in it. False when it does
  /// not come; trouble() says why.
  bool begin( Koi::Seconds patience );
  std::string const & trouble() const { return mount_.trouble(); }

  /// Does what a line says. Raises std::runtime_error with a text that names the word.
  void command( std::string const & line );
  /// Waits for what it has not heard of yet, asks for nothing any more, and waits until that is
  /// known to the agent, each at most so long.
  void end( Koi::Seconds patience );

 private:
  class Watch;

  void takePlace();
  void announce( std::string const & intf, std::string const & rest );
  /// Says what became of an interface when that is not what it said before.
  void tell( Wirex::IntfId const & intfId );
  bool hasHeardOfAll() const;
  std::string verdictOn( Wirex::IntfId const & intfId ) const;
  template< class Condition >
  bool runUntil( Condition isSo, Koi::Seconds patience );

  Koi::Activity * const activity_;
  Koi::Name const name_;
  Say const say_;
  Koi::Ptr< Coredb::Dir > const tree_;
  Koi::Timer returning_;  // when the tree is there again
  Coredb::TreeMount mount_;
  Koi::Ptr< Coredb::Dir > sources_;
  Koi::Ptr< Interface::VlanIntfConfigDir > mine_;
  Koi::Ptr< Lumo::DynVlanIntfList > list_;
  std::unique_ptr< Watch > watch_;
  std::map< Wirex::IntfId, std::string > said_;
};

}  // namespace VlanInterfaces
