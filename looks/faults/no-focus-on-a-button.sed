# scene: button-focused.television.wide.en_GB
# finds: The focus cannot be seen on a button
/group \{ name: "elm\/button\/base/,/^}/ {
  s/color_class: "vesk\/focus";/color_class: "vesk\/button";/
  s/color_class: "vesk\/focus-edge";/color_class: "vesk\/button-edge";/
  /name: "plate"/,/^      \}/ {
    s/rel1.offset: 0 0;/rel1.offset: 4 4;/
    s/rel2.offset: -1 -1;/rel2.offset: -5 -5;/
  }
}
