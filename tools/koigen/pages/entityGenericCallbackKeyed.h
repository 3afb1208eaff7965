void on$Attr$() override {}
void on$Attr$( $key$ k ) override { koiForward( koiOn$Attr$, k ); }
