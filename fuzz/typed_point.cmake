walrim_fuzz(typed_point LINK walrim_dialogs)
