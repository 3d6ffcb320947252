# Makes the feature type name a legal worksheet name. Runs in the engine's
# Tcl interpreter on the feature whose feature type is the proposed name;
# LH_Clear is "yes" on the first pass for a name and "no" on later ones, when
# the dialog already made the name unique.
set name [vyr_feature_type]
# Characters a sheet name may not hold become "_".
set name [string map {: _ \\ _ / _ ? _ * _ [ _ ] _} $name]
# No apostrophe at either end.
set name [string trim $name ']
if {$name eq ""} {
    set name Sheet
}
if {[string equal -nocase $name History]} {
    set name History_
}
# At most 31 characters.
set name [string range $name 0 30]
vyr_feature_type $name
