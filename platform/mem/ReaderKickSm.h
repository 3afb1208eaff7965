// ReaderKickSm.h: a table reader's end of the kicks: says how far it has come and that it sleeps,
// and is woken. One thread: the reader's, which is its activity's.
//
// Without a writer, or one that does not answer, it stays unattached: the reader then looks now and
// then.
#pragma once

#include <functional>
#include <memory>

#include <koi/Activity.h>
#include <mem/Kick.h>
#include <mem/TableDir.h>
#include <ntrace/Ntrace.h>

namespace Mem {

class KOI_PUBLIC ReaderKickSm final {
 public:
  struct Handlers {
    /// The writer has something new.
    std::function< void() > onKick;
    /// The writer answered, refused or has gone: isAttached() says which.
    std::function< void() > onAttached;
  };

  ReaderKickSm( Koi::Activity * activity, Handlers handlers, Ntrace::Handler const & trace );
  ~ReaderKickSm();

  /// Asks the writer of the table in that directory, if there is one, to be let in; the answer
  /// comes when the activity runs. Nothing when it is attached or has asked already.
  void attach( TableDir const & dir );
  void detach();
  bool isAttached() const { return events_ != nullptr; }

  /// Everything up to that sequence is known.
  void acknowledgedIs( U64 sequence );
  /// Goes to sleep: from now on the writer kicks. What came just before is to be looked for after
  /// this.
  void sleep();
  void awaken();

  /// Tells the writer that its files are damaged, and how; best effort.
  void reportCorruption( std::string const & text ) const;

 private:
  bool isAsleep() const { return words_ && ( words_->asleep & 1 ) != 0; }
  void heard();
  void end( char const * why );

  Koi::Activity * const activity_;
  Handlers const handlers_;
  Ntrace::Handler const & trace_;
  KickWords * words_ = nullptr;
  Descriptor socket_, event_;
  std::shared_ptr< Koi::DescriptorWatch > answers_, events_;
};

}  // namespace Mem
