Koi::Ptr< Koi::Entity > $Owner$::$attr$Is( Koi::Name const & k, Koi::Ptr< Koi::Entity > const & v ) {
  return koiAdopt( $attr$_.koiHeld(), $on$, k, v );
}
