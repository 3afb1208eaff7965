// LoadedTable.h: a table that changes as fast as its writer can, and processes that follow it, stop
// and die. It knows what they must have been told.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>

#include <quill/QuillShadow.h>

#include "Quill.h"
#include "Shared.h"

namespace Bench {

/// What somebody knows of a table: the sum says which keys there are and what their generations
/// are.
class Knowledge {
 public:
  /// 0: it is not there.
  void generationIs( Key key, std::uint32_t generation ) {
    auto & known = generations_[key];
    sum_ += of( key, generation ) - of( key, known );
    known = generation;
  }
  std::uint32_t generation( Key key ) { return generations_[key]; }
  std::uint64_t sum() const { return sum_; }

 private:
  static std::uint64_t of( Key key, std::uint32_t generation ) {
    return generation == 0 ? 0 : mixed( key + generation );
  }

  std::unordered_map< Key, std::uint32_t > generations_;
  std::uint64_t sum_ = 0;
};

/// A process that keeps a copy, and what its owner was told.
class FollowingProcess {
 public:
  FollowingProcess( Mem::RootPath const & root, std::string const & table,
                    std::function< bool( Key ) > const & stays );

  bool isReady() const { return board_->isReady; }
  bool knows( Knowledge const & all ) const { return board_->isReady && board_->sum == all.sum(); }
  /// A key that stays was reported as gone, or a generation after a later one.
  bool wasWrong() const { return board_->wasWrong; }
  void stop() const { child_.stop(); }
  void goOn() const { child_.goOn(); }

 private:
  struct Board {
    std::atomic< bool > isReady = false, wasWrong = false;
    std::atomic< std::uint64_t > sum = 0;
  };

  Shared< Board > board_;
  Child const child_;
};

class LoadedTable {
 public:
  /// The activity is the writer's; whoever waits for something runs it.
  LoadedTable( Koi::Activity * activity, Mem::RootPath const & root, std::string name,
               std::size_t numEntries );

  /// Another process follows it.
  std::unique_ptr< FollowingProcess > follower() const;
  /// Changes for so many seconds; changes in a second of the writer's processor.
  double work( double seconds );
  Knowledge const & knowledge() const { return knowledge_; }
  unsigned numReaders() const { return writer_.kicks()->numReaders(); }
  /// The queue is no longer than slots need.
  bool isQueueBounded() const;

 private:
  /// One in 16 keys is never removed.
  static bool stays( Key key ) { return key % 16 == 0; }

  Mem::RootPath const root_;
  std::string const name_;
  std::size_t const numEntries_;
  ::Quill::QuillWriter< Record > writer_;
  Knowledge knowledge_;
  std::uint32_t generation_ = 1;
  std::mt19937 random_{ 1 };
};

}  // namespace Bench
