# scene: six-rows.television.wide.en_GB
# finds: A text has a contrast of
s/(ROLE\("ink", +)[0-9 ]+,/\1150 150 150 255,/
