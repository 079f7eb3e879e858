"""Records of a current-format (version 8) file, made at random: the opening block and the segments."""

from generate_records import (Record, caption_record, date_and_option_records, fixed_real, header_record, random_name,
                              real_record, segment_opening, title_record)

HYDRODYNAMIC_LINKAGE = 3


def current_system_count(rng):
    return rng.choice((0, 1, 2, 3, 3, 6, 6)) if rng.random() > 0.03 else -2


def current_opening(rng, system_count, segment_count):
    """The records, and the hydraulic option of segment 1, which the flow paths need."""
    records = [header_record(rng, rng.choice((3, 3, 8, 99))), title_record(rng, "title")]
    records += date_and_option_records(rng, system_count)
    records.append(real_record(rng, "output_interval", 1))
    records += [Record("system_name", "fixed", [b"%-5.5s     %s" % (rng.choice((b"NH-34", b"DO", b"", b"CBODU1")),
                                                                    random_name(rng))])
                for _ in range(system_count)]
    records.append(title_record(rng, "segment_title"))
    options = [hydraulic_option(rng, index) for index in range(1, segment_count + 1)]
    return (records + segment_opening(rng, segment_count) + current_segments(rng, options),
            options[0] if options else 0)


def hydraulic_option(rng, index):
    """Only that of segment 1 matters behind the segments; None is blank columns, which are 0."""
    if index == 1 and rng.random() < 0.35:
        return HYDRODYNAMIC_LINKAGE
    return rng.choice((0, 1, 2, 3, 4, -3, None)) if index > 1 else rng.choice((0, 1, 2, 4, -3, None))


def current_segments(rng, options):
    names = [Record("segment_name", "fixed",
                    [b"%5d%5s%s" % (index, rng.choice((b"", b"abcde", b"1")), random_name(rng))])
             for index in range(1, len(options) + 1)]
    geometry = [Record("geometry", "fixed", [geometry_columns(rng, index, option)])
                for index, option in enumerate(options, start=1)]
    return names + [caption_record(rng, "geometry_caption")] + geometry


def geometry_columns(rng, index, option):
    """Columns of width 5 and 15; a number without a point has five implied decimals."""
    columns = b"".join(b"%5d" % value for value in (index, rng.randint(0, 9), rng.randint(1, 4)))
    columns += b"     " if option is None else b"%5d" % option
    reals = [fixed_real(rng, 15, 5) for _ in range(rng.choice((16, 16, 16, 16, 10, 3)))]
    return columns + b"".join(reals)
