# scene: toast.television.wide.en_GB
# finds: The toast is
/group \{ name: "elm\/notify\/center\/default"/,/^}/ {
  /clip_to: "shown"/d
  s/description \{ state: "default" 0.0; \}/description { state: "default" 0.0; rel1.offset: -700 -400; rel2.offset: -701 -401; }/
}
