# scene: fifty-rows.television.wide.en_GB
# finds: its scroll bar cannot be seen
s/(ROLE\("bar", +)[0-9 ]+,/\1255 255 255 255,/
