$Type$::$Type$( $parameters$ ) : $initialisers$ {}

$attributes$

Koi::Ptr< $Type$ > $factory$( $parameters$ ) { return new $Type$( $arguments$ ); }
