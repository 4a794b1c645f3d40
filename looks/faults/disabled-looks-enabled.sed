# scene: dropdown-denied.television.wide.en_GB
# finds: A row that cannot be chosen looks as if it could
s/(ROLE\("ink-off", +)[0-9 ]+,/\110 17 22 255,/
