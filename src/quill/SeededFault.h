// SeededFault.h: the steps that tests leave out of the engine, to see that they notice. No product
// code is compiled without one of them.
#pragma once

namespace Quill {

enum class SeededFault {
  none,
  // the writer
  copyBeforeOverwrite,  ///< the value as it was is not put aside
  intentOfInsert,       ///< the slot that is being changed is not named
  intentOfOverwrite,
  intentOfRemove,
  intentOfMove,
  oddSequence,        ///< an overwritten slot does not say so
  evenSequence,       ///< and never says that it is done
  fillBeforeLink,     ///< an entry is linked, then filled
  linkBeforeNotify,   ///< an entry is notified, then linked
  keyOrder,           ///< an entry goes to the front of its chain
  linkCounter,        ///< a changed link keeps its counter
  unlinkBeforeClear,  ///< a removed slot is cleared, then unlinked
  countSlots,         ///< new slots are not counted
  reserveSlots,       ///< room for new slots is not reserved
  resizeBeforeSplit,  ///< more buckets are counted before they are written
  splitHeads,         ///< a new bucket's head is not written
  cutChains,          ///< the chains that were split are not cut
  mergeChains,        ///< a bucket's chain is not appended when it goes
  moveBeforeUnlink,   ///< a moved entry is unlinked, then linked at its new place
  notifyMoveTo,       ///< the place that an entry moves to is not notified
  notifyMoveFrom,     ///< the place that it leaves is not notified
  entryBeforePos,     ///< a notification is counted, then written
  tombstone,          ///< the earlier notification stays
  switchNewFirst,     ///< the old queue names the new one before that is whole
  // the repair
  repairFreeList,
  repairCounts,
  repairCut,
  repairValue,
  repairIntent,
  // the reader
  recheckLink,      ///< the link that led to a slot is not looked at again
  recheckCount,     ///< nor the number of buckets
  recheckSequence,  ///< nor the slot's sequence
  suspectTwice,     ///< what is odd once is corruption
  splitKeys,        ///< a key of the bucket that split off is corruption
  sweepDown,        ///< who goes by slots goes up
  recheckQueue,     ///< a queue that is written anew is read on
  recheckSlotLink,  ///< a slot's link is not looked at again by who goes by slots
  lookElsewhere,    ///< a key that left its slot is gone
  count             ///< not one: how many there are
};

}  // namespace Quill
