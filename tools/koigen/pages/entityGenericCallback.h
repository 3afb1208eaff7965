void on$Attr$() override { koiForward( koiOn$Attr$ ); }
