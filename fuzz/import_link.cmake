walrim_fuzz(import_link LINK walrim_app walrim_text)
