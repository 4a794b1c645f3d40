# scene: row-focused.television.wide.en_GB
# finds: The focus cannot be seen on a row
/group \{ name: "vesk\/row";/,/^}/ s/color: 255 255 255 255;/color: 255 255 255 0;/
