# scene: edit-some.television.wide.en_GB
# finds: A check box is out of line
/name: "elm.swallow.checkbox"/,/^      \}/ s/align: 0.0 0.5;/align: 0.0 0.1;/
