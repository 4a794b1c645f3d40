# scene: six-rows.television.wide.en_GB
# finds: A picture lies over a text
/C_TextItem_WhiteSingleline05/,/^}/ s/rel1.offset: ROW_GAP 0;/rel1.offset: -30 0;/
