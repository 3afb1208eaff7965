void on$Attr$() override { koiForward( koiOn$Attr$Control ); }
void on$Attr$( $key$ k ) override { koiForward( koiOn$Attr$, k ); }
