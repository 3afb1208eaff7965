/// $doc$
$declaration$
