walrim_fuzz(record_decoders LINK walrim_device)
