# scene: edit-some.television.wide.en_GB
# finds: A checked box looks like an unchecked one
/signal: "elm,state,check,on"/,/\}/ s/STATE_SET "on"/STATE_SET "default"/
