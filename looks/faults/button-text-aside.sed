# scene: confirmation.television.wide.en_GB
# finds: off the middle
/style \{ name: "button"/,/\}/ s/align=center/align=left/
