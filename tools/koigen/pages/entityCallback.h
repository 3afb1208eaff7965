virtual void on$Attr$() {}
virtual void on$Attr$KoiImmediate() { koiPass( koiOn$Attr$ ); on$Attr$(); }
static constexpr Koi::Callback< NotifieeConst > koiOn$Attr${
  koiFirst + $index$, &NotifieeConst::on$Attr$, &NotifieeConst::on$Attr$KoiImmediate };
