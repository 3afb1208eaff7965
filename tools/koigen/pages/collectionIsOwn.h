/// The one of that key, made when there is none.
$type$ $attr$Is( $key$ k$parameters$ );
