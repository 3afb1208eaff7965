// RawWalk.h: our files read as if nobody wrote them: the bucket, the chain, the copy, and no check.
// The shortest that a look-up in this layout can take; wrong beside a writer.
#pragma once

#include "Quill.h"

namespace Bench {

struct RawWalk : Quill {
  static constexpr char const * name = "raw_walk";
  static constexpr bool grows = false;  // it does, as Quill does
  static constexpr Beside beside = Beside::nowhere;

  using Quill::Quill;

  struct Reader : Quill::Reader {
    using Memory = Mem::Plain;
    using View = ::Quill::Slots< ::Quill::Record< Record >, Memory >;

    explicit Reader( RawWalk & of ) : Quill::Reader( of ) {
      auto & engine = table.engine();
      slots = engine.slots();
      heads = engine.buckets().at( 0 );
      mask = Mem::unpacked( Memory::load( engine.buckets().numBuckets() ) ).ref - 1;
      seed = engine.seed();
    }

    bool lookup( Key key, Value & value ) {
      auto const words = keyWords( key );
      auto const hash = ::Quill::Record< Record >::hash( words.word, seed );
      Koi::U32 slot = Mem::unpacked( Memory::load( heads + ( hash & mask ) ) ).ref;
      while( !::Quill::isEnd( slot ) ) {
        unsigned char * const at = slots.at( slot );
        Engine::Value found;
        ::Quill::loadWords< Memory, 8 >( found.word, View::value( at ) );
        if( found.key() == words ) {
          value = ::Quill::Record< Record >::value( found.word ).value;
          return true;
        }
        slot = Mem::unpacked( Memory::load( View::link( at ) ) ).ref;
      }
      return false;
    }

   private:
    using Quill::Reader::lookupBatch;

    View slots;
    Koi::U64 const * heads;
    Koi::U32 mask, seed;
  };
};

}  // namespace Bench
