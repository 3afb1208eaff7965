// Report.cpp: looks at an allocator and at what it watches; changes nothing.

#include <internal-vlan/Report.h>

#include <fmt/format.h>
#include <internal-vlan/Choice.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace InternalVlan {

using namespace Bridging;

namespace {

std::string string( Koi::String8 const & text ) { return std::string( text.view() ); }

/// Why a request did not get that VLAN.
std::string whyNot( InternalVlanAllocator const & allocator, VlanId const & vlan ) {
  auto const & requests = *allocator.requests();
  auto const & range = allocator.config()->internalVlanRange();
  if( vlan < range.vlanBegin() || vlan > range.vlanEnd() )
    return "is outside the range";
  if( requests.blacklist().contains( vlan ) )
    return "is on the blacklist";
  if( requests.useWhitelist() && !requests.whitelist( vlan ) )
    return "is not on the whitelist";
  if( !InternalVlanChoice( allocator ).isAllowed( vlan ) )
    return "is configured by a user";
  InternalVlanKeySourcePair const owner = allocator.owner( vlan );
  return "is " + string( owner.key().value() ) + "'s of " + string( owner.source().value() );
}

Answer answerOf( InternalVlanAllocator const & allocator,
                 InternalVlanKeySourcePair const & request ) {
  auto const & requests = *allocator.requests();
  Answer answer{ request,
                 requests.config( request ),
                 requests.preferred( request ),
                 allocator.answers()->status( request ),
                 {} };
  if( !answer.isWanted )
    answer.note = "its entry says that it needs none";
  else if( answer.vlan.value() == 0 )
    answer.note = "no VLAN is left";
  else if( answer.preferred.value() != 0 && answer.preferred != answer.vlan )
    answer.note = fmt::format( "{} {}", answer.preferred.value(),
                               whyNot( allocator, VlanId( answer.preferred.value() ) ) );
  return answer;
}

std::string numberOr( VlanIdOrNone const & vlan, char const * none ) {
  return vlan.value() == 0 ? none : std::to_string( vlan.value() );
}

}  // namespace

Report reportOf( InternalVlanAllocator const & allocator ) {
  Report report{ .answers = {}, .range = allocator.config()->internalVlanRange() };
  for( auto const & request : allocator.requests()->config() )
    report.answers.push_back( answerOf( allocator, request.key() ) );
  std::ranges::sort( report.answers, {}, &Answer::request );
  for( Answer const & answer : report.answers )
    if( answer.isWanted )
      ++( answer.vlan.value() == 0 ? report.numRefused : report.numServed );
  InternalVlanChoice const choice( allocator );
  for( unsigned vlan = report.range.vlanBegin().value(); vlan <= report.range.vlanEnd().value();
       ++vlan )
    report.numLeft +=
        choice.isAllowed( VlanId( vlan ) ) && !allocator.owner().contains( VlanId( vlan ) );
  return report;
}

std::string reportText( Report const & report ) {
  // A key has at most 10 bytes, a source 8.
  std::string text = "Key         Source    Preferred  VLAN\n";
  for( Answer const & answer : report.answers ) {
    text += fmt::format( "{:<10}  {:<8}  {:>9}  {:>4}", string( answer.request.key().value() ),
                         string( answer.request.source().value() ),
                         numberOr( answer.preferred, "any" ), numberOr( answer.vlan, "none" ) );
    text += answer.note.empty() ? "\n" : "  (" + answer.note + ")\n";
  }
  return text + fmt::format( "\n{} served, {} refused; {} of VLANs {}-{} left\n", report.numServed,
                             report.numRefused, report.numLeft, report.range.vlanBegin().value(),
                             report.range.vlanEnd().value() );
}

std::string reportJson( Report const & report ) {
  using Json = nlohmann::ordered_json;
  auto const numberOrNull = []( VlanIdOrNone const & vlan ) {
    return vlan.value() == 0 ? Json() : Json( vlan.value() );
  };
  Json json{ { "schema", "lumo.internal-vlans/1" }, { "answers", Json::array() } };
  for( Answer const & answer : report.answers ) {
    Json one{ { "key", string( answer.request.key().value() ) },
              { "source", string( answer.request.source().value() ) },
              { "wanted", answer.isWanted },
              { "preferred", numberOrNull( answer.preferred ) },
              { "vlan", numberOrNull( answer.vlan ) } };
    if( !answer.note.empty() )
      one["note"] = answer.note;
    json["answers"].push_back( std::move( one ) );
  }
  json["served"] = report.numServed;
  json["refused"] = report.numRefused;
  json["left"] = report.numLeft;
  return json.dump( 2 ) + "\n";
}

}  // namespace InternalVlan
