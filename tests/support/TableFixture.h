// TableFixture.h: what tests of tables begin with: a root of shared memory and an event loop.
#pragma once

#include <koi/Activity.h>
#include <quill/QuillType.h>

#include "ShmRoot.h"

namespace Tests {

struct TableFixture {
  Quill::QuillParameters parameters() const {
    Quill::QuillParameters p;
    p.activity = activity.ptr();
    p.root = shm.root();
    return p;
  }
  /// Runs until that is so; false when it is not within 30 s.
  template< class Condition >
  bool runUntil( Condition isSo ) const {
    for( int i = 0; i < 30000 && !isSo(); ++i )
      activity->runFor( 0.001 );
    return isSo();
  }

  ShmRoot const shm;
  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
};

}  // namespace Tests
