/// $doc$
enum $Type$ : Koi::U32 {
  $enumerators$
};
KOI_ENUM( $Type$ );
