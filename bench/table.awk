# table.awk FIGURES RESULTS...: prints the figures beside their aims. Fails if one of them was not measured.
#
# Results are lines "name,value", or what Google Benchmark prints with --benchmark_format=json; of that each metric
# becomes a result "name:metric".

function Number(text, parts, n)
{
    if (text == "")
        return ""
    n = split(text, parts, "*")
    if (!(parts[1] in result))
        return "missing"
    return result[parts[1]] * (n > 1 ? parts[2] : 1)
}

function Judge(value, reference, aim, parts, n, wanted)
{
    if (aim == "")
        return "-"
    n = split(aim, parts, " ")
    wanted = parts[2] * (n > 2 ? reference : 1)
    if (parts[1] == "<=")
        return value <= wanted ? "met" : "MISSED"
    if (parts[1] == "<")
        return value < wanted ? "met" : "MISSED"
    return value >= wanted ? "met" : "MISSED"
}

function Shown(value)
{
    if (value == "")
        return "-"
    return value == "missing" ? value : sprintf(value >= 1000 ? "%.0f" : "%.3g", value)
}

function Ratio(value, reference)
{
    return reference == "" || reference == "missing" || reference == 0 ? "-" : sprintf("%.3g", value / reference)
}

FILENAME == ARGV[1] {
    if ($0 !~ /^#/ && $0 != "")
        figures[++count] = $0
    next
}

FNR == 1 { name = "" }

# A line of Google Benchmark's JSON: "real_time": 1.5e+03,
/^ *"[a-z0-9_]+": / {
    key = $1
    gsub(/[":]/, "", key)
    value = $0
    sub(/^[^:]*: /, "", value)
    gsub(/[",]/, "", value)
    if (key == "name")
        name = value
    else if (name != "")
        result[name ":" key] = value
    next
}

/^[A-Z][A-Za-z0-9\/]*,/ {
    split($0, field, ",")
    result[field[1]] = field[2]
}

END {
    format = "%-58s %-10s %10s %10s %7s   %-10s %s\n"
    printf format, "Figure", "Unit", "Measured", "Reference", "Ratio", "Aim", ""
    for (i = 1; i <= count; ++i) {
        split(figures[i], row, "|")
        value = Number(row[3])
        reference = Number(row[4])
        if (value == "missing" || reference == "missing") {
            missing = 1
            verdict = "NOT MEASURED"
        } else {
            verdict = Judge(value, reference, row[5])
            aims += verdict != "-"
            missed += verdict == "MISSED"
        }
        printf format, row[1], row[2], Shown(value), Shown(reference), Ratio(value, reference), row[5] == "" ? "-" : row[5], verdict
    }
    printf "\n%d figures, %d with an aim, %d of these missed\n", count, aims, missed
    exit missing
}
