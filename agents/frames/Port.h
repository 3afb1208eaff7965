// Port.h: a port of the bridge, and into which VLAN it takes a frame or why nothing is learned from
// it.
//
// Used by one thread. What the configuration and spanning tree say of the port is read when a frame
// needs it and kept, per VLAN; whoever watches them says when it is to be read again.
#pragma once

#include <Lumo/BrTopology.h>
#include <Lumo/Bridging.h>

#include <array>
#include <span>

#include "Frame.h"
#include "NotLearned.h"

namespace Frames {

class Port {
 public:
  /// A port that does what these two say. Without a SwitchIntfConfig it is a trunk with the native
  /// VLAN 1 and tags of type 0x8100.
  Port( Wirex::IntfId intf, Koi::Ptr< Bridging::Config const > config,
        Koi::Ptr< Bridging::Topology::Config const > topology );
  Port( Port const & ) = delete;
  Port & operator=( Port const & ) = delete;

  Wirex::IntfId intf() const { return intf_; }

  /// What becomes of a frame.
  struct Admission {
    Koi::U16 vlan = 0;         // where its sender is to be learned; 0: nowhere
    NotLearned why{};          // when nowhere
    AddressNumber source = 0;  // else
  };

  /// What becomes of a frame of these captured bytes.
  Admission admissionOf( std::span< Koi::U8 const > frame ) {
    auto const [vlan, why] = claimOf( frame );
    if( vlan == 0 )
      return { 0, why };
    Koi::U8 const verdict = verdictIn( vlan );
    if( verdict != learns )
      return { 0, reasonOf( verdict ) };
    AddressNumber const source = sourceOf( frame );
    if( isGroup( source ) )
      return { 0, NotLearned::groupSource };
    if( source == 0 )
      return { 0, NotLearned::zeroSource };
    return { vlan, {}, source };
  }

  /// The VLAN that the port takes a frame of these captured bytes into, learned from or not; 0: it
  /// drops the frame.
  Koi::U16 vlanOf( std::span< Koi::U8 const > frame ) {
    Koi::U16 const vlan = claimOf( frame ).vlan;
    if( vlan == 0 )
      return 0;
    Koi::U8 const verdict = verdictIn( vlan );
    bool const isTaken = verdict == learns || reasonOf( verdict ) == NotLearned::portLearnsNot ||
                         reasonOf( verdict ) == NotLearned::vlanLearnsNot;
    return isTaken ? vlan : Koi::U16{ 0 };
  }

  /// Whether the port carries the frames of that VLAN in, be it learned from them or not.
  bool carries( Koi::U16 vlan );

  /// The configuration of the port has changed.
  void forgetRules() { isStale_ = true; }
  /// That of the port in this VLAN has.
  void forgetRulesOf( Koi::U16 vlan ) { verdicts_[vlan] = unread; }

 private:
  static constexpr Koi::U16 reserved = 4095;
  enum Verdict : Koi::U8 { unread, learns, firstReason };  // and from there on the reasons

  /// The VLAN that a frame says it is of, whether the port carries that or not; 0: none, and why.
  struct Claim {
    Koi::U16 vlan = 0;
    NotLearned why{};
  };
  Claim claimOf( std::span< Koi::U8 const > frame ) {
    if( isStale_ ) [[unlikely]]
      readRules();
    if( !bridges_ ) [[unlikely]]
      return { 0, NotLearned::notBridging };
    auto const tag = tagOf( frame, tagType_ );
    if( !tag )
      return { 0, NotLearned::tooShort };
    if( ( dropped_ >> tag->format & 1 ) != 0 )
      return { 0, NotLearned::tagFormat };
    Koi::U16 vlan = ignoresTags_ ? Koi::U16{ 0 } : tag->vid;
    if( vlan == reserved )
      return { 0, NotLearned::reservedVlan };
    if( vlan == 0 && ( vlan = nativeVlan_ ) == 0 )
      return { 0, NotLearned::noNativeVlan };
    return { vlan };
  }

  static NotLearned reasonOf( Koi::U8 verdict ) {
    return static_cast< NotLearned >( verdict - firstReason );
  }
  Koi::U8 verdictIn( Koi::U16 vlan ) {
    Koi::U8 & verdict = verdicts_[vlan];
    if( verdict == unread ) [[unlikely]]
      verdict = judge( Bridging::VlanId( vlan ) );
    return verdict;
  }
  void readRules();
  Koi::U8 judge( Bridging::VlanId vlan ) const;
  bool isBlockedIn( Bridging::VlanId vlan ) const;

  Wirex::IntfId const intf_;
  Koi::Ptr< Bridging::Config const > const config_;
  Koi::Ptr< Bridging::Topology::Config const > const topology_;

  bool isStale_ = true;  // what follows is to be read again
  bool bridges_ = true;
  bool ignoresTags_ = false;  // all frames belong to the native VLAN
  bool hasOneVlan_ = false;   // which is the native one
  bool isLearning_ = true;
  unsigned dropped_ = 0;  // bit n: frames of VlanTagFormat n
  unsigned tagType_ = customerTagType;
  Koi::U16 nativeVlan_ = 1;                 // 0: none
  std::array< Koi::U8, 4096 > verdicts_{};  // by VLAN
};

}  // namespace Frames
