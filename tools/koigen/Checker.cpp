#include "Checker.h"

#include <algorithm>

#include "Checks.h"

namespace Koigen {
namespace {

std::string stemOf( std::string const & path ) {
  std::string name = path.substr( path.find_last_of( '/' ) + 1 );
  return name.substr( 0, name.find_last_of( '.' ) );
}

/// Finds the modules that `uses` names.
void linkModules( Model & model, Findings & findings ) {
  std::map< std::string, Module * > modules;
  for( auto & m : model.modules ) {
    checkName( m.place, m.name, findings );
    if( m.name != stemOf( m.place.file ) )
      findings.add( m.place, "module '" + m.name + "' must stand in a file of that name" );
    auto const [it, fresh] = modules.emplace( m.name, &m );
    if( !fresh )
      findings.add( m.place,
                    "module '" + m.name + "' is already '" + it->second->place.file + "'" );
  }
  for( auto & m : model.modules ) {
    std::map< std::string, int > seen;
    for( auto & u : m.uses ) {
      auto const it = modules.find( u.name );
      if( it == modules.end() )
        findings.add( u.place, "there is no module '" + u.name + "'" );
      else if( it->second == &m )
        findings.add( u.place, "a module does not use itself" );
      else if( seen[u.name]++ )
        findings.add( u.place, "'uses " + u.name + ";' is said twice" );
      else
        u.module = it->second;
    }
  }
}

/// The modules in an order in which each comes after those that it uses. Finds circles.
class Order {
 public:
  Order( Model & model, Findings & findings ) : model_( model ), findings_( findings ) {
    for( auto & m : model.modules )
      visit( m );
  }
  std::vector< Module * > const & modules() const { return done_; }

 private:
  void visit( Module & m ) {
    if( std::find( done_.begin(), done_.end(), &m ) != done_.end() )
      return;
    path_.push_back( &m );
    for( auto const & u : m.uses )
      for( auto & used : model_.modules ) {
        if( &used != u.module )
          continue;
        auto const it = std::find( path_.begin(), path_.end(), &used );
        if( it == path_.end() )
          visit( used );
        else
          report( u, it );
      }
    path_.pop_back();
    done_.push_back( &m );
  }

  void report( Uses const & closing, std::vector< Module * >::iterator first ) {
    std::string circle;
    for( auto it = first; it != path_.end(); ++it )
      circle += ( *it )->name + ", ";
    findings_.add( closing.place,
                   "'uses " + closing.name + ";' closes a circle: " + circle + closing.name );
  }

  Model & model_;
  Findings & findings_;
  std::vector< Module * > path_, done_;
};

void checkDeclaration( Checks checks, Declaration & d ) {
  if( d.kind != Declaration::function ) {
    checkName( d.place, d.name, checks.findings );
    if( d.name[0] < 'A' || d.name[0] > 'Z' )
      checks.findings.add( d.place,
                           "'" + d.name + "' must begin with a capital, for it is a type" );
  }
  for( std::string scope = d.scope; !scope.empty(); ) {
    auto const cut = scope.find( "::" );
    checkName( d.place, scope.substr( 0, cut ), checks.findings );
    scope = cut == scope.npos ? "" : scope.substr( cut + 2 );
  }
  checkDoc( d.place, d.kind == Declaration::function ? d.members.front().name : d.name, d.doc,
            checks.findings );
  if( d.foreign && d.header.empty() )
    checks.findings.add( d.place, "the foreign '" + d.name + "' names no header" );
  if( !d.foreign && !d.header.empty() )
    checks.findings.add( d.place, "'" + d.name + "' names a header: is it foreign?" );
  switch( d.kind ) {
    case Declaration::wrapper:
      checkWrapper( checks, d );
      break;
    case Declaration::structure:
      checkStructure( checks, d );
      break;
    case Declaration::enumeration:
      checkEnumeration( checks, d );
      break;
    case Declaration::entity:
      checkEntity( checks, d );
      break;
    case Declaration::reactor:
      checkReactor( checks, d );
      break;
    case Declaration::function:
      checkFunction( checks, d, d.members.front() );
      break;
  }
  checkMemberNames( checks, d );
}

void throwIfAny( Findings const & findings, Model const & model ) {
  if( !findings.empty() )
    throw ModelError( findings.text( model ) );
}

}  // namespace

void check( Model & model ) {
  Findings findings;
  for( auto & m : model.modules )
    for( std::size_t i = 0; i < m.declarations.size(); ++i ) {
      m.declarations[i].module = &m;
      m.declarations[i].index = i;
    }

  // 1. The modules: nothing else can be judged while they do not fit together.
  linkModules( model, findings );
  Order const order( model, findings );
  throwIfAny( findings, model );

  // 2. What they declare, each after what it needs.
  Resolver resolver( model, findings );
  for( auto * module : order.modules() )
    for( auto & d : module->declarations )
      checkDeclaration( { findings, resolver }, d );
  resolver.finish();
  throwIfAny( findings, model );
}

Model parsedText( std::string_view text, std::string const & fileName ) {
  Model model;
  model.modules.push_back( parsedModule( text, fileName ) );
  check( model );
  return model;
}

}  // namespace Koigen
