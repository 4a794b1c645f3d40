# scene: names.television.wide.en_GB
# finds: Two texts overlap
/C_TextItem_WhiteSingleline05/,/^}/ {
  /rel2.to_x: "elm.text.1"/d
  /name: "elm.text"; type: TEXT;/,/color_class/ s/rel2.relative: 0.0 1.0;/rel2.relative: 1.0 1.0;/
}
