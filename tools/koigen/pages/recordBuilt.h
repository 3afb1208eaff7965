$Type$(
    $fields$ )
