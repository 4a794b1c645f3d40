# scene: six-rows.television.wide.en_GB
# finds: A title stands on the wrong side
/part \{ name: "elm.text.title"/,/color_class/ s/align: 0.0 0.5/align: 1.0 0.5/g
