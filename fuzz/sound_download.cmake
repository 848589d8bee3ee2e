walrim_fuzz(sound_download LINK walrim_device)
