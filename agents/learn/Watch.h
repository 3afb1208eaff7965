// Watch.h: who observes what a learner obeys, and tells it what has changed.
//
// Used by Learner alone, on its thread. Every callback only says where to look. It may be the last
// thing that its observer does: what the learner does then can end the observer.
#pragma once

#include <map>

#include "Learner.h"

namespace Learn {

class Learner::Watch {
 public:
  /// Observes the learner's bridge from now on. What stands there already is told of, too:
  /// configured hosts come, requests to flush are answered.
  explicit Watch( Learner & learner );

 private:
  // One observer for each member of a collection.
  template< class Key, class Observer >
  class Each {
   public:
    /// Observes that entity under that key; null: nothing.
    template< class E, class... More >
    void follow( Key const & key, Koi::Ptr< E > const & entity, More &... more ) {
      Key const k = key;
      observers_.erase( k );
      if( entity )
        observers_.try_emplace( k, k, *entity, more... );
    }

   private:
    std::map< Key, Observer > observers_;
  };

  class OfPort final : public Bridging::SwitchIntfConfig::NotifieeConst {
   public:
    OfPort( Wirex::IntfId intf, Bridging::SwitchIntfConfig const & port, Learner & learner )
        : intf_( intf ), learner_( learner ) {
      notifierIs( &port );
    }

   private:
    void onSwitchportModeAndNativeVlan() override { learner_.portChanged( intf_ ); }
    void onMacLearningEnabled() override { learner_.portChanged( intf_ ); }
    void onVlanTpid() override { learner_.portChanged( intf_ ); }
    using NotifieeConst::onVlanTagFormatDrop;
    void onVlanTagFormatDrop( Bridging::VlanTagFormat ) override { learner_.portChanged( intf_ ); }

    Wirex::IntfId const intf_;
    Learner & learner_;
  };

  class OfVlan final : public Bridging::VlanConfig::NotifieeConst {
   public:
    OfVlan( Bridging::VlanId vlan, Bridging::VlanConfig const & config, Learner & learner )
        : vlan_( vlan ), learner_( learner ) {
      notifierIs( &config );
    }

   private:
    using NotifieeConst::onIntf;
    void onIntf( Wirex::IntfId const & ) override { learner_.vlanChanged( vlan_ ); }
    void onAdminState() override { learner_.vlanChanged( vlan_ ); }
    void onMacLearning() override { learner_.vlanChanged( vlan_ ); }

    Bridging::VlanId const vlan_;
    Learner & learner_;
  };

  class OfFdb final : public Bridging::FdbConfig::NotifieeConst {
   public:
    OfFdb( Bridging::Fid fid, Bridging::FdbConfig const & fdb, Learner & learner )
        : fid_( fid ), learner_( learner ) {
      notifierIs( &fdb );
    }

   private:
    using NotifieeConst::onConfiguredHost;
    void onConfiguredHost( Wirex::EthAddr const & address ) override {
      learner_.configuredHostChanged( fid_, address );
    }

    Bridging::Fid const fid_;
    Learner & learner_;
  };

  class OfConfig final : public Bridging::Config::NotifieeConst {
   public:
    explicit OfConfig( Learner & learner );

   private:
    void onHostAgingTime() override { learner_.agingTimeChanged(); }
    using NotifieeConst::onSwitchIntfConfig;
    void onSwitchIntfConfig( Wirex::IntfId const & intf ) override;
    using NotifieeConst::onVlanConfig;
    void onVlanConfig( Bridging::VlanId const & vlan ) override;
    using NotifieeConst::onFdbConfig;
    void onFdbConfig( Bridging::Fid const & fid ) override;
    using NotifieeConst::onVidToFidMap;
    void onVidToFidMap( Bridging::VlanId const & vlan ) override { learner_.fidChanged( vlan ); }

    Learner & learner_;
    Each< Wirex::IntfId, OfPort > ports_;
    Each< Bridging::VlanId, OfVlan > vlans_;
    Each< Bridging::Fid, OfFdb > fdbs_;
  };

  class OfTopologyPort final : public Bridging::Topology::TopoPortConfig::NotifieeConst {
   public:
    OfTopologyPort( Wirex::IntfId intf, Bridging::Topology::TopoPortConfig const & port,
                    Koi::Ptr< Bridging::Topology::TopoConfig const > const & topology,
                    Learner & learner )
        : intf_( intf ), topology_( topology ), learner_( learner ) {
      notifierIs( &port );
    }

   private:
    void onState() override { learner_.topologyChanged(); }
    void onFdbFlush() override { learner_.flushTopology( *topology_, intf_ ); }

    Wirex::IntfId const intf_;
    Koi::Ptr< Bridging::Topology::TopoConfig const > const topology_;
    Learner & learner_;
  };

  class OfTopology final : public Bridging::Topology::TopoConfig::NotifieeConst {
   public:
    OfTopology( Koi::Name const & name, Bridging::Topology::TopoConfig const & topology,
                Learner & learner );

   private:
    using NotifieeConst::onTopoPortConfig;
    void onTopoPortConfig( Wirex::IntfId const & intf ) override;

    Learner & learner_;
    Each< Wirex::IntfId, OfTopologyPort > ports_;
  };

  class OfTopologies final : public Bridging::Topology::Config::NotifieeConst {
   public:
    explicit OfTopologies( Learner & learner );

   private:
    void onAgingTime() override { learner_.agingTimeChanged(); }
    using NotifieeConst::onTopoConfig;
    void onTopoConfig( Koi::Name const & name ) override;
    using NotifieeConst::onVidToTopoMap;
    void onVidToTopoMap( Bridging::VlanId const & vlan ) override {
      learner_.topologyChanged( vlan );
    }

    Learner & learner_;
    Each< Koi::Name, OfTopology > topologies_;
  };

  class OfFlushRequests final : public Bridging::HostTableFlushRequestDir::NotifieeConst {
   public:
    explicit OfFlushRequests( Learner & learner );

   private:
    using NotifieeConst::onHostTableFlushRequest;
    void onHostTableFlushRequest( Koi::String8 const & key ) override;

    Learner & learner_;
  };

  OfConfig config_;
  OfTopologies topologies_;
  OfFlushRequests flushRequests_;
};

}  // namespace Learn
