# scene: six-rows.television.wide.en_GB
# finds: A picture is 110 high
s/(#define ROW_ICON +)[0-9]+/\1110/
