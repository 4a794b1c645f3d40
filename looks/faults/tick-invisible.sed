# scene: edit-some.television.wide.en_GB
# finds: A checked box shows no tick
/part \{ name: "tick"/,/color_class/ s/color_class: "[^"]+"/color_class: "vesk\/ink"/
