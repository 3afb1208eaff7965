Koi::LinkQueueMetadata< $key$ > $attr$Metadata() const { return $attr$_.metadata(); }
$key$ $attr$Enq( $argument$ v );
$type$ $attr$Deq();
