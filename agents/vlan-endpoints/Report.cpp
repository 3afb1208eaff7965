#include <fmt/format.h>
#include <vlan-endpoints/Report.h>

namespace VlanEndpoints {

std::string reportOf( Stations const & stations, Wirex::PamMuxDemux const & mux ) {
  constexpr char const * row = "{:>8}  {:>9}  {:>9}  {:>10}  {:>10}  {:>8}\n";
  std::string text =
      fmt::format( row, "VLAN", "In frames", "In octets", "Out frames", "Out octets", "Answered" );
  text += fmt::format( row, "--------", "---------", "---------", "----------", "----------",
                       "--------" );
  Koi::U64 dropped = mux.onePam()->counters().rxDropped + mux.onePam()->counters().txDropped +
                     mux.counters().closedPkts;
  for( auto const & [vlan, station] : stations ) {
    auto const counted = station->pam()->counters();
    text += fmt::format( row, vlan == 0 ? "untagged" : std::to_string( vlan ), counted.rxPkts,
                         counted.rxBytes, counted.txPkts, counted.txBytes, station->numAnswered() );
    dropped += counted.rxDropped + counted.txDropped;
  }
  auto const & nowhere = mux.counters();
  return text + fmt::format( "\nOf unknown VLANs: {} frames, {} octets. Dropped: {} frames.\n",
                             nowhere.unknownPkts, nowhere.unknownBytes, dropped );
}

}  // namespace VlanEndpoints
