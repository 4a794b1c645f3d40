# scene: edit-some.television.wide.en_GB.contrast
# finds: A checked box shows no tick
s/^( *)ROLE\("panel",.*/&\n\1ROLE("fault", 255 255 255 255, 255 255 255 255)/
/part \{ name: "tick"/,/color_class/ s/color_class: "[^"]+"/color_class: "vesk\/fault"/
