# scene: six-rows.television.wide.en_GB
# finds: A picture is 78 high
s/(#define ROW_ICON +)[0-9]+/\178/
