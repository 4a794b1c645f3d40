# scene: six-rows.television.wide.en_GB
# finds: A text has a contrast of
s/(ROLE\("ink-soft", +)[0-9 ]+,/\1190 196 200 255,/
