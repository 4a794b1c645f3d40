# scene: dropdown-allowed.television.wide.en_GB
# finds: A panel that waits is as bright as the one before it
s/(ROLE\("dim-(20|50)", +)[0-9 ]+,/\10 0 0 0,/
