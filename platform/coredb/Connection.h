// Connection.h: carries the bytes of one end of an attribute log over a stream socket. On its
// activity's thread.
//
// C1  What the log has to say is written when the socket takes it. Until what was written has been
//     taken nothing more is made of it: a peer that does not read costs one buffer and the log's
//     marks.
// C2  Once it has ended it calls nobody, and nobody's log.
#pragma once

#include <functional>
#include <string>

#include <koi/Activity.h>
#include <koi/Mirror.h>
#include <mem/Kick.h>

namespace Coredb {

class Connection {
 public:
  struct Handlers {
    /// Something was taken in.
    std::function< void() > onReceived;
    /// It has ended; it is destroyed later, by deferred work.
    std::function< void( std::string const & why ) > onEnd;
  };

  /// Begins with whatever the log has to say. The log is the caller's and outlives it.
  Connection( Koi::Activity * activity, Koi::Mirror & log, Mem::Descriptor socket,
              Handlers handlers );
  ~Connection();
  Connection( Connection const & ) = delete;
  Connection & operator=( Connection const & ) = delete;

 private:
  void read();
  void write();
  void end( std::string const & why );

  Koi::Mirror & log_;
  Mem::Descriptor const socket_;
  Handlers const handlers_;
  Koi::Ptr< Koi::NboAttrLog::Out > const out_{ new Koi::NboAttrLog::Out };
  std::size_t numSent_ = 0;  // bytes of out_
  Koi::DescriptorWatch readable_, writable_;
};

}  // namespace Coredb
