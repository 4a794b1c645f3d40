# scene: confirmation.television.wide.en_GB
# finds: of its line
s/(#define BUTTON_PAD +)[0-9]+/\12/
/wrap=mixed ellipsis=1.0/ s/align=center/align=left/
