#!/usr/bin/env bash
# Imports the unpacked Python module: python_module.sh ROOT. It finds the component by itself.
set -euo pipefail
unset LD_LIBRARY_PATH KOLVANE_FOLDER
export PYTHONPATH=$1/usr/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1
[ "$(/usr/bin/python3 -c 'import kolvane; print(kolvane.MainClass().CanUnload, kolvane.__file__.startswith("'"$1"'"))')" = "False True" ]
