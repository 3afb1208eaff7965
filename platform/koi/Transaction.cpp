#include <koi/Transaction.h>

#include <exception>

namespace Koi {

Notice::~Notice() = default;

constinit thread_local OpenTransaction * OpenTransaction::current_ = nullptr;

void OpenTransaction::add( std::unique_ptr< Notice > notice ) {
  auto const [begin, end] = known_.equal_range( notice->hash() );
  for( auto at = begin; at != end; ++at )
    if( at->second->isLike( *notice ) )
      return;
  known_.emplace( notice->hash(), notice.get() );
  notices_.push_back( std::move( notice ) );
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
