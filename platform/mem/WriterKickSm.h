// WriterKickSm.h: a table writer's end of the kicks: who reads the table, how far each has come,
// and waking who sleeps. One thread: the writer's, which is its activity's.
//
// Waking costs a look at each reader's word, and a system call only where one sleeps. Readers are
// let in, and leave, when the activity runs; a writer that never runs its loop is followed by
// readers that look now and then.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <koi/Activity.h>
#include <mem/Followers.h>
#include <mem/Kick.h>
#include <mem/TableDir.h>
#include <ntrace/Ntrace.h>

namespace Mem {

class KOI_PUBLIC WriterKickSm final : public Followers {
 public:
  struct Handlers {
    /// Some reader came or went.
    std::function< void() > onReaders;
    /// A reader says that the files are damaged, and how.
    std::function< void( std::string const & ) > onCorruption;
  };
  static constexpr U32 mostReadersOfAUser = 64;
  /// Who has not moved for so long, in seconds, is not waited for.
  static constexpr Koi::Seconds patience = 1;

  /// Listens in the table's directory, of which it has the lock, for so many readers of a user. A
  /// system that gives no socket is traced at level 0: then nobody attaches.
  WriterKickSm( Koi::Activity * activity, TableDir const & dir, Handlers handlers,
                Ntrace::Handler const & trace, U32 mostReaders = mostReadersOfAUser );
  ~WriterKickSm() override;

  U64 lowestSequence( U64 sequence ) override;
  bool areAwaited() override;
  U32 numReaders() const override { return numReaders_; }
  void wake() override;

  /// How many times somebody was woken.
  U64 numKicks() const { return numKicks_; }

 private:
  class Reader;

  void accept();
  void forget( Reader const * reader );

  Koi::Activity * const activity_;
  TableDir const & dir_;
  Handlers const handlers_;
  Ntrace::Handler const & trace_;
  U32 const mostReaders_;
  Descriptor listening_;
  std::unique_ptr< Koi::DescriptorWatch > watch_;
  std::vector< std::unique_ptr< Reader > > readers_;
  U32 numReaders_ = 0;
  U64 numKicks_ = 0;
};

}  // namespace Mem
