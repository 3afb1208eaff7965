virtual void on$Attr$() {}
virtual void on$Attr$( $key$ ) {}
virtual void on$Attr$KoiImmediate( $key$ k ) { koiPass( koiOn$Attr$ ); on$Attr$( k ); }
static constexpr Koi::Callback< NotifieeConst, $key$ > koiOn$Attr${
  koiFirst + $index$, &NotifieeConst::on$Attr$, &NotifieeConst::on$Attr$KoiImmediate };
