// Kick.h: what a table's writer and its readers say to each other: that there is something new, how
// far a reader has come, that a file is damaged.
//
// A reader connects to the socket "kick" in the table's directory (SOCK_SEQPACKET) and sends
// `attach` with the descriptor of its words, a memory file of one page that is sealed against
// shrinking; the answer is `attached` with an eventfd, or `refused` with the reason. From then on
// neither needs a system call as long as the reader is awake: how far it has come, and whether it
// sleeps, stands in the words. Who sleeps is woken by its eventfd, once. Either end's exit ends the
// connection.
//
// A message is the kind and the version, 4 bytes each as the machine has them, then a text.
#pragma once

#include <string>
#include <utility>

#include <koi/Export.h>
#include <mem/Words.h>

namespace Mem {

/// A reader's words: it alone writes them. Both widths have them alike.
struct KickWords {
  static constexpr U64 nothingYet = ~U64{ 0 };

  alignas( 64 ) U32 asleep = 0;  ///< odd while it sleeps; another odd number each time
  alignas( 64 ) U64 acknowledged = nothingYet;
};
static_assert( sizeof( KickWords ) == 128 );

struct KickMessage {
  static constexpr char socketName[] = "kick";
  static constexpr U32 currentVersion = 1;
  static constexpr std::size_t mostText = 1000;
  enum Kind : U32 { attach = 1, attached = 2, refused = 3, corruption = 4 };

  Kind kind = attach;
  U32 version = currentVersion;
  std::string text;
  int descriptor = -1;  ///< goes along; whoever receives it closes it

  /// False when the other end has gone or takes nothing more.
  bool send( int socket ) const;

  enum class Received { message, nothing, end };
  Received receive( int socket );
};

/// A descriptor that is closed with its owner.
class KOI_PUBLIC Descriptor {
 public:
  explicit Descriptor( int number = -1 ) : number_( number ) {}
  Descriptor( Descriptor && other ) noexcept : number_( other.release() ) {}
  Descriptor & operator=( Descriptor && other ) noexcept {
    reset( other.release() );
    return *this;
  }
  ~Descriptor() { reset(); }

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  int release() { return std::exchange( number_, -1 ); }
  void reset( int number = -1 );

 private:
  int number_;
};

}  // namespace Mem
