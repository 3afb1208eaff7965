// VlanIntfCounterMountHelper.h: mounts the table of a system's VLAN interface counters under the
// path that everybody knows, "counters/vlanIntf/<name>". One thread, that of the entity manager.
#pragma once

#include <Lumo/VlanIntf.h>
#include <quill/EntityManager.h>

namespace Interface {

class KOI_PUBLIC VlanIntfCounterMountHelper final : public Koi::PtrInterface {
 public:
  /// Raises RangeException "null entity manager not allowed".
  explicit VlanIntfCounterMountHelper( Koi::Ptr< KoiQuill::EntityManager > const & manager );

  /// Takes part in the table as a reader; what is mounted already is returned. A table that is
  /// there can be looked into at once, one that is not when the event loop has found it. A '/' or
  /// '%' in the name is written %2F or %25. Raises what KoiQuill::EntityManager::doMount() raises.
  Koi::Ptr< AllVlanIntfCounterQuill > doMount( Koi::Name const & name );
  /// Takes part in the table as its writer, who keeps at most `size` interfaces in it. Raises
  /// ArgumentException "counters/vlanIntf/<name> is mounted already" and what else
  /// KoiQuill::EntityManager::doMount() raises.
  Koi::Ptr< AllVlanIntfCounterQuill > doMountWrite( Koi::Name const & name, unsigned size );

 private:
  void handleZeroRef() const override { delete this; }
  Koi::Ptr< AllVlanIntfCounterQuill > mounted( std::string const & path,
                                               KoiQuill::MountInfo const & info );

  Koi::Ptr< KoiQuill::EntityManager > const manager_;
};

KOI_PUBLIC Koi::Ptr< VlanIntfCounterMountHelper > vlanIntfCounterMountHelperFactory(
    Koi::Ptr< KoiQuill::EntityManager > const & manager );

}  // namespace Interface
