# scene: toast.television.wide.en_GB
# finds: The toast is
/group \{ name: "elm\/notify\/center\/default"/,/^}/ s/relative: 0.5 1.0/relative: 0.15 1.0/
