# scene: row-focused.television.wide.en_GB
# finds: A text has a contrast of 1.
s/(ROLE\("focus-ink", +)[0-9 ]+,/\120 120 140 255,/
