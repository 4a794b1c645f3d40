# scene: names.television.wide.en_GB
# finds: Two texts overlap
/rel2.to_x: "access";/,/rel2.relative/ {
  /rel2.to_x/d
  s/rel2.relative: 0.0 1.0;/rel2.relative: 1.0 1.0;/
}
