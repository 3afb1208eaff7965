// Capture.h: one capture file, read frame by frame.
//
// Used by one thread. Only the frame at hand is in memory, however long the file is, so a pipe will
// do as well as a file. The bytes of a frame hold until the next frame of the same capture is asked
// for.
#pragma once

#include <compare>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

struct pcap;

namespace Frames {

/// When a frame was captured, as exactly as the file says it.
struct CaptureTime {
  std::int64_t seconds = 0;       // since 1970, UTC
  std::uint32_t nanoseconds = 0;  // below 1,000,000,000

  auto operator<=>( CaptureTime const & ) const = default;

  /// The same as one number; for times in whole microseconds the double nearest to the decimal
  /// number.
  double asSeconds() const;
};

/// One frame: its bytes as far as they were captured, which may be less than was on the wire.
struct CapturedFrame {
  CaptureTime time;
  std::span< std::uint8_t const > bytes;
  std::uint32_t wireSize = 0;  // how many there were on the wire, as far as the file says
};

/// What is wrong with a capture, without the name of the file.
class CaptureException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A capture of Ethernet frames that is open for reading.
class Capture {
 public:
  /// Opens a pcap or pcapng file; "-" is standard input. Throws CaptureException when it cannot be
  /// opened, is no capture or holds frames of another link type than Ethernet.
  /// One that is watched can say when next() would wait: it takes no more from a pipe than it has
  /// delivered, which is slower. What a pipe holds is looked at by next(), which refuses it then.
  enum Opening { plain, watched };
  explicit Capture( std::string const & path, Opening opening = plain );
  ~Capture();
  Capture( Capture const & ) = delete;
  Capture & operator=( Capture const & ) = delete;

  /// The next frame, in the order of the file; null at its end. Throws CaptureException where the
  /// file is damaged; no frame can be had after that.
  CapturedFrame const * next();

  /// What next() may have to wait for now, a pipe that is written slowly; -1 when it need not. Of a
  /// capture that was opened to be watched.
  int awaited() const;

  /// How many frames next() has delivered.
  std::uint64_t numFrames() const { return numFrames_; }

 private:
  struct Closer {
    void operator()( pcap * handle ) const;
  };
  struct FileCloser {
    void operator()( std::FILE * file ) const;
  };
  void begin();

  std::unique_ptr< std::FILE, FileCloser > file_;  // until its beginning was read
  std::unique_ptr< pcap, Closer > handle_;
  int waitsAt_ = -1;  // a pipe or the like that is watched
  CapturedFrame frame_;
  std::uint64_t numFrames_ = 0;
};

}  // namespace Frames
