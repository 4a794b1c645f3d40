# scene: six-rows.television.wide.de_DE
# finds: A text is cut
s/(#define TEXT_BUTTON +)[0-9]+/\160/
