// Transaction.h: a run of changes that observers are told of when it has ended.
//
// What is changed inside is stored at once. When the work is done every attribute or key that
// changed is told once, in the order of first changes. One thread; each thread has its own.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <koi/Export.h>
#include <koi/Types.h>

namespace Koi {

/// One notification that waits for the end of a transaction: of one attribute or key.
class KOI_PUBLIC Notice {
 public:
  explicit Notice( std::size_t hash ) : hash_( hash ) {}
  virtual ~Notice();
  virtual void tell() = 0;
  /// Of the same attribute or key?
  virtual bool isLike( Notice const & other ) const = 0;
  std::size_t hash() const { return hash_; }

 private:
  std::size_t const hash_;
};

/// Runs `work` as a transaction; inside another one, as a part of that. Afterwards the observers
/// are told; the first exception of one of them leaves when all have been. When `work` throws, what
/// it had changed is told, and its exception leaves.
KOI_PUBLIC void transaction( std::function< void() > const & work );

/// The changes of the thread's open transaction.
class KOI_PUBLIC OpenTransaction {
 public:
  void add( std::unique_ptr< Notice > notice );
  /// Tells all. Raises the first exception that an observer raised.
  void tell();

  /// Null when the thread is in none.
  static OpenTransaction * current() { return current_; }

 private:
  friend void transaction( std::function< void() > const & work );

  [[gnu::tls_model( "initial-exec" )]] static constinit thread_local OpenTransaction * current_;

  /// One place of a hash table: where in notices_ the notice of that hash is, counted from 1; 0:
  /// there is none.
  struct Known {
    U32 hash = 0;
    U32 place = 0;
  };

  void grow();

  std::vector< std::unique_ptr< Notice > > notices_;
  std::vector< Known > known_;  // probed place by place; a power of two, never more than half full
};

}  // namespace Koi
