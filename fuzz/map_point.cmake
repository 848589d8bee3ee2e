walrim_fuzz(map_point LINK walrim_dialogs)
