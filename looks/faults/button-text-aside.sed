# scene: confirmation.television.wide.en_GB
# finds: off the middle
/wrap=mixed ellipsis=1.0/ s/align=center/align=left/
