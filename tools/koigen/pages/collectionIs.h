void $attr$Is( $key$ k, $argument$ v );
