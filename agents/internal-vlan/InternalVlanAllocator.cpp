// InternalVlanAllocator.cpp: how requests for internal VLANs are answered.
//
// What a handler was called for is only where to look: the request, the lists and the configuration
// decide as they are. Who is told of an answer may change any of them meanwhile, so the own tables
// are right before an answer is written.

#include <internal-vlan/Choice.h>

#include <koi/KeysOf.h>

namespace Bridging {
namespace {

using Koi::keysOf;
using Pair = InternalVlanKeySourcePair;
using Allocator = InternalVlanAllocator;

bool isReady( Allocator const & allocator ) {
  return allocator.requests() && allocator.config() && allocator.answers();
}

/// The request's VLAN is that one from now on; none: it has none, and waits if it wants one.
void give( Allocator & allocator, Pair const & pair, VlanIdOrNone const & vlan, bool isWanted ) {
  VlanIdOrNone const old = allocator.answers()->status( pair );
  if( old.value() != 0 && old != vlan && allocator.owner( VlanId( old.value() ) ) == pair )
    allocator.ownerDel( VlanId( old.value() ) );
  if( vlan.value() != 0 )
    allocator.ownerIs( VlanId( vlan.value() ), pair );
  if( vlan.value() == 0 && isWanted )
    allocator.waitingIs( pair, true );
  else
    allocator.waitingDel( pair );
  allocator.answers()->statusIs( pair, vlan );
}

/// Answers one request, or takes back what a request had that is gone.
void review( Allocator & allocator, Pair const & pair ) {
  InternalVlanChoice const choice( allocator );
  auto const & requests = *allocator.requests();
  if( !requests.config( pair ) ) {  // gone, or there without a need
    give( allocator, pair, {}, false );
    if( !requests.config().contains( pair ) )
      allocator.answers()->statusDel( pair );
    return;
  }
  VlanIdOrNone const now = allocator.answers()->status( pair );
  bool const isGood = now.value() != 0 && allocator.owner( VlanId( now.value() ) ) == pair &&
                      choice.isAllowed( VlanId( now.value() ) );
  VlanIdOrNone const wish = choice.preferred( pair );
  give( allocator, pair, wish.value() != 0 ? wish : isGood ? now : choice.next(), true );
}

/// What is free now goes to those who wait.
void serve( Allocator & allocator ) {
  for( Pair const & pair : keysOf( allocator.waiting() ) )
    if( allocator.waiting( pair ) )
      review( allocator, pair );
}

/// Whoever has a VLAN that is no longer allowed gets another one, or none.
void reviewAll( Allocator & allocator ) {
  for( VlanId const & vlan : keysOf( allocator.owner() ) )
    if( allocator.owner().contains( vlan ) && !InternalVlanChoice( allocator ).isAllowed( vlan ) )
      review( allocator, allocator.owner( vlan ) );
  serve( allocator );
}

void reviewVlan( Allocator & allocator, VlanId const & vlan ) {
  if( !isReady( allocator ) )
    return;
  if( allocator.owner().contains( vlan ) && !InternalVlanChoice( allocator ).isAllowed( vlan ) )
    review( allocator, allocator.owner( vlan ) );
  serve( allocator );
}

void reviewRequest( Allocator & allocator, Pair const & pair ) {
  if( !isReady( allocator ) )
    return;
  review( allocator, pair );
  serve( allocator );
}

}  // namespace

void InternalVlanAllocator::handleInitialized() {
  ownerDelAll();
  waitingDelAll();
  if( !isReady( *this ) )
    return;
  // 1. What was handed out before stays with whoever still asks for it.
  InternalVlanChoice const choice( *this );
  for( Pair const & pair : keysOf( answers()->status() ) ) {
    VlanIdOrNone const vlan = answers()->status( pair );
    if( vlan.value() != 0 && requests()->config( pair ) &&
        choice.isAllowed( VlanId( vlan.value() ) ) && !owner().contains( VlanId( vlan.value() ) ) )
      ownerIs( VlanId( vlan.value() ), pair );
  }
  // 2. All are answered; what nobody asks for goes.
  for( Pair const & pair : keysOf( answers()->status() ) )
    review( *this, pair );
  for( Pair const & pair : keysOf( requests()->config() ) )
    review( *this, pair );
}

void InternalVlanAllocator::handleConfig( Pair const & pair ) { reviewRequest( *this, pair ); }
void InternalVlanAllocator::handlePreferred( Pair const & pair ) {
  if( requests() && requests()->config().contains( pair ) )
    reviewRequest( *this, pair );
}
void InternalVlanAllocator::handleWhitelist( VlanId const & vlan ) { reviewVlan( *this, vlan ); }
void InternalVlanAllocator::handleBlacklist( VlanId const & vlan ) { reviewVlan( *this, vlan ); }
void InternalVlanAllocator::handleVlanConfig( VlanId const & vlan ) { reviewVlan( *this, vlan ); }
void InternalVlanAllocator::handleUseWhitelist() {
  if( isReady( *this ) )
    reviewAll( *this );
}
void InternalVlanAllocator::handleInternalVlanRange() {
  if( isReady( *this ) )
    reviewAll( *this );
}

}  // namespace Bridging
