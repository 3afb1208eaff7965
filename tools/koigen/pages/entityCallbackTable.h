/// The table is there, and what is in it can be looked up.
virtual void on$Attr$() {}
virtual void on$Attr$( $key$ ) {}
virtual void on$Attr$KoiImmediate() { koiPass( koiOn$Attr$Control ); on$Attr$(); }
virtual void on$Attr$KoiImmediate( $key$ k ) { koiPass( koiOn$Attr$ ); on$Attr$( k ); }
static constexpr Koi::Callback< NotifieeConst, $key$ > koiOn$Attr${
  koiFirst + $index$, &NotifieeConst::on$Attr$, &NotifieeConst::on$Attr$KoiImmediate };
static constexpr Koi::Callback< NotifieeConst > koiOn$Attr$Control{
  koiFirst + $control$, &NotifieeConst::on$Attr$, &NotifieeConst::on$Attr$KoiImmediate };
