$Type$::$Type$($parameters$)$initialisers$ {
  koiBegin();
}

$attributes$

Koi::Ptr< $Type$ > $Type$Is($parameters$) { return Koi::reactorIs< $Type$ >($arguments$); }
Koi::Ptr< $Type$ > $factory$($parameters$) { return $Type$Is($arguments$); }
