walrim_fuzz(gpx LINK walrim_formats)
