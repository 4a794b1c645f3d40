# scene: dropdown-allowed.television.wide.en_GB
# finds: has its mark on the wrong side
/part \{ name: "mark";/,/color_class/ s/align: 0.0 0.5;/align: 1.0 0.5;/
