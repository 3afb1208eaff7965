#include "IntfSubcommand.h"

namespace Lumo {

using Wirex::IntfId;

std::string intfsText( IntfSet const & intfs ) {
  std::string text;
  for( IntfId const & intf : intfs )
    ( text += text.empty() ? "" : "," ) += intf.stringValue().view();
  return text;
}

IntfFilter::IntfFilter( std::vector< std::string > const & names ) {
  for( std::string const & name : names )
    try {
      IntfId const intf{ Koi::String8( name ) };
      if( intf == IntfId() )
        throw Failure( wrongUse, "the name of an interface was expected" );
      named_.insert( intf );
    } catch( Koi::Exception const & e ) {
      throw Failure( wrongUse, e.what() );
    }
  missing_ = named_;
}

bool IntfFilter::admits( IntfId const & intf ) {
  missing_.erase( intf );
  return named_.empty() || named_.contains( intf );
}

Status IntfFilter::complainOfMissing( std::string const & what ) const {
  for( IntfId const & intf : missing_ )
    complain( std::string( intf.stringValue().view() ) + ": " + what );
  return missing_.empty() ? succeeded : absent;
}

IntfSubcommand::IntfSubcommand( CLI::App & group, std::string const & name,
                                std::string const & description,
                                std::string const & namesDescription )
    : Subcommand( group, name, description ) {
  command()
      .add_option( "NAME", names_, namesDescription )
      ->type_name( "" )
      ->delimiter( ',' )
      ->expected( 0, -1 );
  command()
      .add_option( "--sysname", sysname_, "the system; not needed when there is only one" )
      ->type_name( "NAME" );
}

std::string IntfSubcommand::jsonText( std::string const & kind, std::string const & sysname,
                                      std::string const & name, Json const & members ) {
  Json const whole{
      { "schema", "lumo." + kind + "/1" }, { "sysname", sysname }, { name, members } };
  return whole.dump( 2, ' ', false, Json::error_handler_t::replace ) + "\n";
}

}  // namespace Lumo
