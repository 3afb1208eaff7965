#include <koi/Transaction.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace Koi {

Notice::~Notice() = default;

constinit thread_local OpenTransaction * OpenTransaction::current_ = nullptr;

void OpenTransaction::add( std::unique_ptr< Notice > notice ) {
  if( notices_.size() * 2 >= known_.size() )
    grow();
  // A notice's hash is little more than an address where there is no key.
  auto const hash = static_cast< U32 >( notice->hash() * U64{ 0x9e3779b97f4a7c15 } >> 32 );
  std::size_t const mask = known_.size() - 1;
  std::size_t at = hash & mask;
  for( ; known_[at].place != 0; at = ( at + 1 ) & mask )
    if( known_[at].hash == hash && notices_[known_[at].place - 1]->isLike( *notice ) )
      return;
  notices_.push_back( std::move( notice ) );
  known_[at] = { hash, static_cast< U32 >( notices_.size() ) };
}

void OpenTransaction::grow() {
  std::vector< Known > const old = std::exchange(
      known_, std::vector< Known >( std::max< std::size_t >( 16, known_.size() * 2 ) ) );
  std::size_t const mask = known_.size() - 1;
  for( Known const & known : old ) {
    if( known.place == 0 )
      continue;
    std::size_t at = known.hash & mask;
    while( known_[at].place != 0 )
      at = ( at + 1 ) & mask;
    known_[at] = known;
  }
}

void OpenTransaction::tell() {
  std::exception_ptr first;
  for( auto const & notice : notices_ )
    try {
      notice->tell();
    } catch( ... ) {  // whatever an observer throws, it is the transaction's caller who gets it
      if( !first )
        first = std::current_exception();
    }
  if( first )
    std::rethrow_exception( first );
}

void transaction( std::function< void() > const & work ) {
  if( OpenTransaction::current_ ) {
    work();
    return;
  }
  OpenTransaction open;
  OpenTransaction::current_ = &open;
  try {
    work();
  } catch( ... ) {  // there is no undo: observers must not miss what was done
    OpenTransaction::current_ = nullptr;
    try {
      open.tell();
    } catch( ... ) {  // one exception can leave: that of the work
    }
    throw;
  }
  OpenTransaction::current_ = nullptr;
  open.tell();
}

}  // namespace Koi
