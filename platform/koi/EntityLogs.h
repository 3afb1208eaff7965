// EntityLogs.h: the attribute logs that an entity is attached to: its adapters, whose change is
// being made, whether it may be changed here. An entity has one once a log is attached.
#pragma once

#include <memory>
#include <vector>

#include <koi/Types.h>

namespace Koi {

class Entity;
class KoiNboAttrLogSa;
class Mirror;

class EntityLogs {
 public:
  ~EntityLogs();

  /// The adapter of that log; null when there is none.
  KoiNboAttrLogSa * adapter( Mirror const & mirror ) const;
  void add( std::unique_ptr< KoiNboAttrLogSa > adapter );
  void remove( Mirror const & mirror );
  bool empty() const { return adapters_.empty(); }

  /// The change that is made next is the peer's of that adapter; null: it is ours.
  void remoteIs( KoiNboAttrLogSa const * adapter ) { remote_ = adapter; }
  /// Whose the next change is, 0: ours. Asking uses it up: what that change brings about is ours.
  U16 takeOrigin();

  /// True when a change would be refused: the entity is a read-only proxy's, and the change is not
  /// one that the runtime allows (readOnlyRemoteOk).
  bool isRefusing() const;

  /// The entity is taken out of its tree.
  void entityLeaves();
  /// The attribute changed: marks it in every adapter but that of `origin`.
  void mark( unsigned attribute, U16 origin );

 private:
  std::vector< std::unique_ptr< KoiNboAttrLogSa > > adapters_;
  KoiNboAttrLogSa const * remote_ = nullptr;
};

}  // namespace Koi
