// TableCollection.h: a keyed collection of an entity whose members lie in a table outside of it,
// which several processes share: what reflection sees of it. Attribute logs do not carry it.
//
// Used on the entity's thread.
#pragma once

#include <koi/GenericEntity.h>
#include <koi/String8.h>

namespace Koi {

class KOI_PUBLIC TableCollection {
 public:
  TableCollection( TableCollection const & ) = delete;
  TableCollection & operator=( TableCollection const & ) = delete;

  /// The entry of the key that is the only one of `args`; null when there is none. Raises
  /// ArgumentException, naming the attribute `what`, when that is no key.
  virtual GenericIfPtr koiEntry( std::string const & what, CtorArgs const & args ) const = 0;
  /// A walk over the entries.
  virtual Ptr< GenericIfIterator > koiEntries( Entity & owner ) = 0;
  /// How this process takes part in the table, in a word or two.
  virtual String8 koiControl() const = 0;

 protected:
  TableCollection() = default;
  virtual ~TableCollection();
};

}  // namespace Koi
